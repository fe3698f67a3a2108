// Plain text in the engine's expressions, and expressions that are nothing but texts to choose from, such as
// "http://|www\.".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorvel {

// Appends to an expression of PCRE2 the code `byte`.
void AppendByte(std::string& expression, unsigned char byte);
// Appends `character`, which matches itself and its other case.
void AppendCharacter(std::string& expression, char character);

// An expression of PCRE2 that matches in the same texts as `expression` does, if at other places, and is
// looked for several times faster; none when `expression` is no choice of plain texts or there is no faster
// one.
std::optional<std::string> FasterChoice(std::string_view expression);

}  // namespace zorvel
