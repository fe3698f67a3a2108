// The texts that stand for codes in stream records: copy modes, creation modes and text-file changes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zorvel {

// The text of a copy's flags word when it has exactly bit 0, 1, 2 ... set.
inline constexpr std::array<std::string_view, 16> kCopyModes = {"Copy Always",
                                                                "Copy If Exists",
                                                                "Copy If Does Not Exist",
                                                                "Copy If Newer",
                                                                "Copy If Newer And Exists",
                                                                "Request Confirmation",
                                                                "?",
                                                                "?",
                                                                "?",
                                                                "?",
                                                                "Copy If Newer Version",
                                                                "?",
                                                                "?",
                                                                "?",
                                                                "?",
                                                                "Copy If Different"};

struct CopyMode {
    std::string_view text;    // empty for a word that stands for no mode
    std::string_view suffix;  // ", Shared" or empty
};

constexpr std::string_view CopyModeText(std::uint32_t flags) {
    for (std::size_t bit = 0; bit < kCopyModes.size(); ++bit) {
        if (flags == std::uint32_t{1} << bit) return kCopyModes[bit];
    }
    return {};
}

// The mode that a copy's flags word (16 bits) stands for.
constexpr CopyMode CopyModeOf(std::uint32_t flags) {
    constexpr std::uint32_t kShared = 512;  // alone it is a mode of unknown meaning
    const std::string_view text = CopyModeText(flags);
    if (!text.empty() || flags <= kShared) return {text, {}};
    return {CopyModeText(flags - kShared), ", Shared"};
}

// The text of a registry value's creation-mode byte; empty for an unknown one.
constexpr std::string_view CreationModeText(std::uint8_t mode) {
    switch (mode) {
        case 1:
            return "Create Always";
        case 2:
            return "Create If Exists";
        case 4:
            return "Create If Doesnt Exist";
        default:
            return {};
    }
}

// The kind of a text-file change that has a replacement.
inline constexpr std::uint8_t kFindAndReplace = 4;

// The text of a text-file change of kind 1 to 4; empty for any other.
constexpr std::string_view ChangeText(std::uint8_t kind) {
    constexpr std::array<std::string_view, 5> kChanges = {"", "Addition to beginning of file",
                                                          "Addition to end of file", "Deleted text string",
                                                          "Find and Replace"};
    return kind < kChanges.size() ? kChanges[kind] : std::string_view();
}

}  // namespace zorvel
