// Hexadecimal digits, of which a byte has two.
#pragma once

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

}  // namespace zorvel
