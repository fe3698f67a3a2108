// Hexadecimal digits, of which a byte has two: written in upper case, read in either.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorvel {

inline constexpr std::string_view kHexDigits = "0123456789ABCDEF";

// Appends the two digits of a byte.
inline void AppendHex(std::string& digits, unsigned char byte) {
    digits += kHexDigits[byte >> 4U];
    digits += kHexDigits[byte & 0xFU];
}

// Two digits a byte.
inline std::string ToHex(std::string_view bytes) {
    std::string digits;
    digits.reserve(bytes.size() * 2);
    for (const char byte : bytes)
        AppendHex(digits, static_cast<unsigned char>(byte));
    return digits;
}

// The value of a hexadecimal digit; nothing for any other character.
constexpr std::optional<unsigned> HexDigitValue(char character) {
    if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
    if (character >= 'A' && character <= 'F') return static_cast<unsigned>(character - 'A') + 10;
    if (character >= 'a' && character <= 'f') return static_cast<unsigned>(character - 'a') + 10;
    return std::nullopt;
}

// The byte whose two digits `text` begins with; nothing when it does not begin with two.
constexpr std::optional<unsigned char> HexByte(std::string_view text) {
    if (text.size() < 2) return std::nullopt;
    const std::optional<unsigned> high = HexDigitValue(text[0]);
    const std::optional<unsigned> low = HexDigitValue(text[1]);
    if (!high || !low) return std::nullopt;
    return static_cast<unsigned char>(*high << 4U | *low);
}

}  // namespace zorvel
