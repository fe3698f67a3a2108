// Maps keyed by text that are searched without making a string.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/code_page.h"

namespace zorvel {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

template <typename Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

// FNV-1a over the upper-case text.
struct AnyCaseHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
        std::uint64_t hash = 0xCBF29CE484222325;
        for (const char character : text)
            hash = (hash ^ static_cast<unsigned char>(UpperChar(character))) * 0x100000001B3;
        return static_cast<std::size_t>(hash ^ hash >> 32);
    }
};

struct AnyCaseEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const noexcept {
        return left == right || EqualIgnoringCase(left, right);
    }
};

// Keys are the same text in any case, and keep the spelling in which they were added.
template <typename Value>
using AnyCaseMap = std::unordered_map<std::string, Value, AnyCaseHash, AnyCaseEqual>;

}  // namespace zorvel
