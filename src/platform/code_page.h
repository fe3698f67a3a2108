// The single-byte code page of all text inside the program: Windows-1252.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// Text of the code page from UTF-8. A character without a code, and each malformed sequence, becomes "?".
// The five codes that Windows-1252 leaves open stand for the control characters of the same number.
std::string FromUtf8(std::string_view utf8);

// UTF-8 from text of the code page; never fails.
std::string ToUtf8(std::string_view text);
// The same, appended to `utf8`.
void AppendUtf8(std::string& utf8, std::string_view text);
// Appends the UTF-8 of one Unicode scalar value (0 to 0x10FFFF without the surrogates).
void AppendUtf8(std::string& utf8, char32_t code_point);

// Upper case by the code page ("é" becomes "É"), whatever the locale; a letter without one stays.
char UpperChar(char character) noexcept;
std::string UpperCase(std::string_view text);
void MakeUpperCase(std::string& text) noexcept;
bool IsUpperCase(std::string_view text) noexcept;

// Comparisons without regard to case.
bool EqualIgnoringCase(std::string_view left, std::string_view right) noexcept;
bool BeginsIgnoringCase(std::string_view text, std::string_view prefix) noexcept;

}  // namespace zorvel
