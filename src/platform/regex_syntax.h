// The syntax of the expressions that users type: that of ECMAScript, over the code page's bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"

namespace zorvel {

// An expression as PCRE2 takes it.
struct EngineExpression {
    std::string text;
    // For each byte of `text` the place, counted from 0, in the user's expression that it stands for.
    std::vector<std::size_t> places;
    // How many ways there are, about, to match the repeated items of `text` against a long text from one
    // place.
    double ways = 1;
    bool references = false;  // to what a group has matched
};

// What ways becomes by one repetition without end, and by one of a group.
inline constexpr double kEndless = 65'536;
inline constexpr double kRepeatedGroup = 8'388'608;

// Rewrites an expression of ECMAScript (ECMA-262 with its Annex B, without the flags u and v) so that PCRE2
// understands it the same way. What only PCRE2 gives a meaning (possessive quantifiers, inline options,
// POSIX classes, "\A", verbs) is refused or loses that meaning, as ECMAScript has it. "\uXXXX" is the byte
// of that character in the code page. What is found by it begins and ends where the engine finds it fastest:
// it tells in which texts the expression matches, not where. Raises ExpressionFault.
EngineExpression TranslateExpression(std::string_view expression);

// The error (number 5) of an expression with a fault; `place` counts its characters from 0.
Error ExpressionFault(std::size_t place, std::string_view reason);

}  // namespace zorvel
