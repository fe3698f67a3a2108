#include "platform/regex_tables.h"

#include <algorithm>
#include <cstddef>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::size_t kCodes = 256;
constexpr std::size_t kAsciiCodes = 128;

// The parts of the tables: the lower case of every code, its other case, ten sets of a bit for every code,
// and a byte of types for every code.
constexpr std::size_t kLowerPart = 0;
constexpr std::size_t kFlipPart = kLowerPart + kCodes;
constexpr std::size_t kSets = kFlipPart + kCodes;
constexpr std::size_t kSetCount = 10;
constexpr std::size_t kSetSize = kCodes / 8;
constexpr std::size_t kTypes = kSets + kSetCount * kSetSize;
constexpr std::size_t kSize = kTypes + kCodes;
constexpr std::size_t kDigitSet = kSets + 2 * kSetSize;
constexpr std::size_t kWordSet = kSets + 5 * kSetSize;

std::uint8_t LowerCase(std::size_t code) {
    const bool upper = static_cast<unsigned char>(kUpperCase[code]) == code;
    return static_cast<std::uint8_t>(upper ? kOtherCase[code] : static_cast<char>(code));
}

std::uint8_t OtherCase(std::size_t code) {
    return static_cast<std::uint8_t>(kOtherCase[code]);
}

bool InSet(std::span<const std::uint8_t> tables, std::size_t set, std::size_t code) {
    return (tables[set + code / 8] >> (code % 8) & 1U) != 0;
}

// Whether the tables say of ASCII what is known of it.
bool IsLaidOutAsKnown(std::span<const std::uint8_t> tables) {
    if (tables.size() != kSize) return false;
    for (std::size_t code = 0; code < kAsciiCodes; ++code) {
        const bool digit = code >= '0' && code <= '9';
        const bool word = digit || code == '_' || OtherCase(code) != code;
        const bool known = tables[kLowerPart + code] == LowerCase(code) &&
                           tables[kFlipPart + code] == OtherCase(code) &&
                           InSet(tables, kDigitSet, code) == digit && InSet(tables, kWordSet, code) == word;
        if (!known) return false;
    }
    return true;
}

}  // namespace

std::vector<std::uint8_t> CharacterTables(std::span<const std::uint8_t> made) {
    if (!IsLaidOutAsKnown(made)) throw Error(errors::kNoAutomation);
    std::vector<std::uint8_t> tables(made.begin(), made.end());
    for (std::size_t code = kAsciiCodes; code < kCodes; ++code) {
        tables[kLowerPart + code] = LowerCase(code);
        tables[kFlipPart + code] = OtherCase(code);
        tables[kTypes + code] = 0;
    }
    constexpr std::size_t kAsciiBytes = kAsciiCodes / 8;
    for (std::size_t set = kSets; set < kTypes; set += kSetSize)
        std::fill_n(tables.begin() + static_cast<std::ptrdiff_t>(set + kAsciiBytes), kSetSize - kAsciiBytes,
                    0);
    return tables;
}

}  // namespace zorvel
