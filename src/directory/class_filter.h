// Which objects a list is asked for.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "directory/directory.h"

namespace zorvel {

// The names of classes, separated by commas; none lets all pass. Aliases pass with the containers.
class ClassFilter {
  public:
    // The text must live as long.
    explicit ClassFilter(std::string_view classes) : names_(Split(classes)) {
        const std::vector<std::string_view> containers = Split(kContainerClasses);
        aliases_pass_ = std::any_of(names_.begin(), names_.end(), [&](std::string_view name) {
            return std::find(containers.begin(), containers.end(), name) != containers.end();
        });
    }
    bool Passes(std::string_view class_name) const {
        if (names_.empty() || (aliases_pass_ && class_name == kAliasClass)) return true;
        return std::find(names_.begin(), names_.end(), class_name) != names_.end();
    }

  private:
    static std::vector<std::string_view> Split(std::string_view text) {
        std::vector<std::string_view> parts;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find(','), text.size());
            parts.push_back(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        return parts;
    }

    std::vector<std::string_view> names_;
    bool aliases_pass_ = false;
};

}  // namespace zorvel
