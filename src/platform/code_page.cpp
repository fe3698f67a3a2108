#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zorvel {
namespace {

using Byte = unsigned char;

// Code points of the codes 128 to 159 (Unicode's "bestfit1252" mapping); all other codes are their own code
// points.
constexpr std::array<char16_t, 32> kCodePoints = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool IsAscii(char character) {
    return static_cast<Byte>(character) < 0x80;
}

char CodeOf(char32_t code_point) {
    if (code_point < 0x80 || (code_point >= 0xA0 && code_point <= 0xFF)) {
        return static_cast<char>(static_cast<Byte>(code_point));
    }
    const auto* found = std::find(kCodePoints.begin(), kCodePoints.end(), code_point);
    if (found == kCodePoints.end()) return '?';
    return static_cast<char>(static_cast<Byte>(0x80 + (found - kCodePoints.begin())));
}

// What a lead byte says of its sequence: the bytes that follow, its own bits, and the range of the second
// byte (Unicode Standard, table 3-7).
struct Lead {
    int following;
    char32_t bits;
    Byte low, high;
};

constexpr Lead LeadOf(Byte byte) {
    if (byte >= 0xC2 && byte <= 0xDF) return {1, byte & 0x1Fu, 0x80, 0xBF};
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, byte & 0x0Fu, static_cast<Byte>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<Byte>(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, byte & 0x07u, static_cast<Byte>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<Byte>(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0, 0};
}

}  // namespace

std::string FromUtf8(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    std::size_t at = 0;
    while (at < utf8.size()) {
        if (IsAscii(utf8[at])) {
            const auto* end = std::find_if_not(utf8.begin() + at, utf8.end(), IsAscii);
            text.append(utf8.begin() + at, end);
            at = static_cast<std::size_t>(end - utf8.begin());
            continue;
        }
        const Lead lead = LeadOf(static_cast<Byte>(utf8[at++]));
        char32_t code_point = lead.bits;
        Byte low = lead.low;
        Byte high = lead.high;
        int missing = lead.following;
        for (; missing > 0 && at < utf8.size(); --missing, ++at) {
            const auto byte = static_cast<Byte>(utf8[at]);
            if (byte < low || byte > high) break;
            code_point = (code_point << 6) | (byte & 0x3Fu);
            low = 0x80;
            high = 0xBF;
        }
        text += lead.following == 0 || missing > 0 ? '?' : CodeOf(code_point);
    }
    return text;
}

std::string ToUtf8(std::string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    AppendUtf8(utf8, text);
    return utf8;
}

void AppendUtf8(std::string& utf8, std::string_view text) {
    for (const char character : text) {
        const auto code = static_cast<Byte>(character);
        if (code < 0x80) {
            utf8 += character;
        } else {
            AppendUtf8(utf8, static_cast<char32_t>(code < 0xA0 ? kCodePoints[code - 0x80u] : code));
        }
    }
}

void AppendUtf8(std::string& utf8, char32_t code_point) {
    const auto following = [&](int shift) {
        utf8 += static_cast<char>(0x80 | ((code_point >> shift) & 0x3F));
    };
    if (code_point < 0x80) {
        utf8 += static_cast<char>(code_point);
    } else if (code_point < 0x800) {
        utf8 += static_cast<char>(0xC0 | (code_point >> 6));
        following(0);
    } else if (code_point < 0x10000) {
        utf8 += static_cast<char>(0xE0 | (code_point >> 12));
        following(6);
        following(0);
    } else {
        utf8 += static_cast<char>(0xF0 | (code_point >> 18));
        following(12);
        following(6);
        following(0);
    }
}

void MakeUpperCase(std::string& text) noexcept {
    // Of ASCII text many characters are changed at once: these loops have nothing to look up.
    Byte bits = 0;
    for (const char character : text)
        bits |= static_cast<Byte>(character);
    if (bits < 0x80) {
        for (char& character : text)
            character =
                static_cast<char>(character >= 'a' && character <= 'z' ? character - 0x20 : character);
        return;
    }
    for (char& character : text)
        character = UpperChar(character);
}

bool IsUpperCase(std::string_view text) noexcept {
    // As above: most texts are upper-case ASCII, and these are told at once.
    unsigned other = 0;
    for (const char character : text)
        other |= static_cast<unsigned>((character >= 'a' && character <= 'z') || !IsAscii(character));
    if (other == 0) return true;
    return std::all_of(text.begin(), text.end(),
                       [](char character) { return UpperChar(character) == character; });
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    MakeUpperCase(upper);
    return upper;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) noexcept {
    return left.size() == right.size() && BeginsIgnoringCase(left, right);
}

bool BeginsIgnoringCase(std::string_view text, std::string_view prefix) noexcept {
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char a, char b) { return UpperChar(a) == UpperChar(b); });
}

}  // namespace zorvel
