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
    // For each byte of `text`: which character of the user's expression, counted from 0, it was made from.
    std::vector<std::size_t> places;
    // An estimate of how many ways the engine may have to try, from one start in a long text, before it knows
    // that the repeated parts of the expression do not match there.
    double ways = 1;
    // True when the expression refers back to what one of its groups has matched ("\1").
    bool references = false;
};

// By what `ways` is multiplied for a repetition without an upper limit ("a*"), and for any repetition of a
// group ("(ab)*"). A repetition with an upper limit multiplies it by that limit.
inline constexpr double kEndless = 65'536;
inline constexpr double kRepeatedGroup = 8'388'608;

// Rewrites an expression of ECMAScript (ECMA-262 with its Annex B, without the flags u and v) so that PCRE2
// understands it the same way. What only PCRE2 gives a meaning (possessive quantifiers, inline options,
// POSIX classes, "\A", verbs) is refused or loses that meaning, as ECMAScript has it. "\uXXXX" is the byte
// of that character in the code page. The result matches in exactly the texts in which the user's expression
// does, but perhaps at another place or length there, as that can be found faster. Raises ExpressionFault.
EngineExpression TranslateExpression(std::string_view expression);

// The error (number 5) of an expression with a fault; `place` counts its characters from 0.
Error ExpressionFault(std::size_t place, std::string_view reason);

}  // namespace zorvel
