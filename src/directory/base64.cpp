#include "directory/base64.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace zorvel {
namespace {

using Byte = unsigned char;

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr Byte kNone = 0x80;  // set in no value of the alphabet

constexpr std::array<Byte, 256> MakeValues() {
    std::array<Byte, 256> values{};
    values.fill(kNone);
    for (std::size_t value = 0; value < kAlphabet.size(); ++value) {
        values[static_cast<Byte>(kAlphabet[value])] = static_cast<Byte>(value);
    }
    return values;
}
constexpr std::array<Byte, 256> kValues = MakeValues();

Byte ValueOf(char character) {
    return kValues[static_cast<Byte>(character)];
}

}  // namespace

std::optional<std::size_t> DecodeBase64(std::span<char> text, std::size_t& fault) {
    std::size_t length = text.size();
    // At most two "=" fill the last group; what is left of it holds one or two bytes.
    if (length % 4 == 0 && length > 0 && text[length - 1] == '=') length -= text[length - 2] == '=' ? 2 : 1;

    std::size_t from = 0;
    std::size_t to = 0;
    for (; from + 4 <= length; from += 4) {
        const Byte a = ValueOf(text[from]);
        const Byte b = ValueOf(text[from + 1]);
        const Byte c = ValueOf(text[from + 2]);
        const Byte d = ValueOf(text[from + 3]);
        if (((a | b | c | d) & kNone) != 0) break;
        text[to++] = static_cast<char>(a << 2 | b >> 4);
        text[to++] = static_cast<char>(b << 4 | c >> 2);
        text[to++] = static_cast<char>(c << 6 | d);
    }
    std::uint32_t bits = 0;
    for (fault = from; fault < length; ++fault) {
        const Byte value = ValueOf(text[fault]);
        if (value == kNone) return std::nullopt;
        bits = bits << 6 | value;
    }
    if (text.size() % 4 != 0) return std::nullopt;
    if (length - from == 2) text[to++] = static_cast<char>(bits >> 4);
    if (length - from == 3) {
        text[to++] = static_cast<char>(bits >> 10);
        text[to++] = static_cast<char>(bits >> 2);
    }
    return to;
}

}  // namespace zorvel
