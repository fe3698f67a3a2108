// The single-byte code page of all text inside the program: Windows-1252.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace zorvel {

// The upper case of every code.
inline constexpr std::array<char, 256> kUpperCase = [] {
    std::array<char, 256> table{};
    for (int code = 0; code < 256; ++code) {
        int upper = code;
        if ((code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE && code != 0xF7))
            upper = code - 0x20;
        if (code == 0x9A || code == 0x9C || code == 0x9E) upper = code - 0x10;
        if (code == 0xFF) upper = 0x9F;
        table[static_cast<std::size_t>(code)] = static_cast<char>(static_cast<unsigned char>(upper));
    }
    return table;
}();

// The other case of every code: of a letter without one, and of all else, the code itself.
inline constexpr std::array<char, 256> kOtherCase = [] {
    std::array<char, 256> table = kUpperCase;
    for (int code = 0; code < 256; ++code) {
        const auto upper = static_cast<unsigned char>(kUpperCase[static_cast<std::size_t>(code)]);
        if (upper != code) table[upper] = static_cast<char>(static_cast<unsigned char>(code));
    }
    return table;
}();

// Text of the code page from UTF-8. A character without a code, and each malformed sequence, becomes "?".
// The five codes that Windows-1252 leaves open stand for the control characters of the same number.
std::string FromUtf8(std::string_view utf8);

// UTF-8 from text of the code page; never fails.
std::string ToUtf8(std::string_view text);
// The same, appended to `utf8`.
void AppendUtf8(std::string& utf8, std::string_view text);
// Appends the UTF-8 of one Unicode scalar value (0 to 0x10FFFF without the surrogates).
void AppendUtf8(std::string& utf8, char32_t code_point);

// True for the control characters: the codes below the blank, DEL, and the five that Windows-1252 leaves
// open.
constexpr bool IsControl(char character) noexcept {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F || code == 0x81 || code == 0x8D || code == 0x8F || code == 0x90 ||
           code == 0x9D;
}

// Upper case by the code page ("é" becomes "É"), whatever the locale; a letter without one stays.
inline char UpperChar(char character) noexcept {
    return kUpperCase[static_cast<unsigned char>(character)];
}
std::string UpperCase(std::string_view text);
void MakeUpperCase(std::string& text) noexcept;
bool IsUpperCase(std::string_view text) noexcept;

// Comparisons without regard to case.
bool EqualIgnoringCase(std::string_view left, std::string_view right) noexcept;
bool BeginsIgnoringCase(std::string_view text, std::string_view prefix) noexcept;

}  // namespace zorvel
