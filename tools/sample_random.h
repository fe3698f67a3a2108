// Random numbers for made-up data: the same on every machine and with every library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace zorvel::tools {

// SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014): cheap enough to give
// every object a generator of its own, so that no object depends on those written before it.
class Random {
  public:
    // The generator of object number `index` of a kind; different `kind`s give unrelated numbers.
    Random(std::uint64_t seed, std::uint64_t kind, std::uint64_t index) : state_(seed) {
        state_ = Next() ^ kind;
        state_ = Next() ^ index;
    }

    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }
    // A number from 0 to `limit` - 1; `limit` is 1 to 2^32.
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>((Next() >> 32U) * limit >> 32U); }
    // True in `chances` of 100 cases.
    bool Percent(std::size_t chances) { return Below(100) < chances; }
    template <typename Table>
    const auto& Pick(const Table& table) {
        return table[Below(table.size())];
    }

  private:
    std::uint64_t state_;
};

// The texts one after the other.
inline std::string Concat(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (const std::string_view part : parts)
        size += part.size();
    std::string text;
    text.reserve(size);
    for (const std::string_view part : parts)
        text += part;
    return text;
}

// A number in decimal, with leading zeros up to `digits` digits.
inline std::string Number(std::size_t number, std::size_t digits = 1) {
    std::string text = std::to_string(number);
    if (text.size() < digits) text.insert(0, digits - text.size(), '0');
    return text;
}

}  // namespace zorvel::tools
