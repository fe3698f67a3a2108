#include "findings/name_pattern.h"

#include <array>
#include <cstddef>
#include <utility>

#include "platform/code_page.h"

namespace zorvel {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kHives = {{
    {"HKCR\\", "HKEY_CLASSES_ROOT\\"},
    {"HKCU\\", "HKEY_CURRENT_USER\\"},
    {"HKLM\\", "HKEY_LOCAL_MACHINE\\"},
    {"HKU\\", "HKEY_USERS\\"},
    {"HKCC\\", "HKEY_CURRENT_CONFIG\\"},
}};

}  // namespace

NamePattern::NamePattern(std::string_view pattern) : pattern_(UpperCase(pattern)) {}

bool NamePattern::Matches(std::string_view name) const {
    std::size_t at = 0;
    std::size_t in_name = 0;
    // Where the last "*" stands, and where the text that it stands for ends so far: only this one can need
    // more.
    std::size_t star = std::string::npos;
    std::size_t covered = 0;
    while (in_name < name.size()) {
        if (at < pattern_.size() && pattern_[at] == '*') {
            star = at++;
            covered = in_name;
        } else if (at < pattern_.size() &&
                   (pattern_[at] == '?' || pattern_[at] == UpperChar(name[in_name]))) {
            ++at;
            ++in_name;
        } else if (star != std::string::npos) {
            at = star + 1;
            in_name = ++covered;
        } else {
            return false;
        }
    }
    return pattern_.find_first_not_of('*', at) == std::string::npos;
}

std::string NamePattern::WithWholeHive(std::string_view pattern) {
    for (const auto& [brief, whole] : kHives) {
        if (BeginsIgnoringCase(pattern, brief))
            return std::string(whole).append(pattern.substr(brief.size()));
    }
    return std::string(pattern);
}

}  // namespace zorvel
