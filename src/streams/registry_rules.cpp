#include "streams/registry_rules.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"
#include "streams/issue_rule.h"

namespace zorvel {
namespace {

struct RegistryEntry {
    std::string_view key;
    std::string_view data;
    const std::vector<std::string>& exclusions;
};

// True when `key` begins with `beginning`, which is in upper case. Most entries of a list begin alike, so
// their last character is looked at first.
bool Begins(std::string_view key, std::string_view beginning) {
    return !beginning.empty() && key.size() >= beginning.size() &&
           UpperChar(key[beginning.size() - 1]) == beginning.back() && BeginsIgnoringCase(key, beginning);
}

bool IsExcluded(const RegistryEntry& entry) {
    return std::any_of(entry.exclusions.begin(), entry.exclusions.end(),
                       [&entry](const std::string& beginning) { return Begins(entry.key, beginning); });
}

constexpr std::array<IssueRule<RegistryEntry>, 2> kRegistryRules = {{
    {.issue = Issue::kRegistryUnc,
     .holds = [](const RegistryEntry& entry) { return entry.data.starts_with(R"(\\)"); }},
    {.issue = Issue::kRegistryExclude, .holds = IsExcluded},
}};

}  // namespace

std::string_view RegistryValid(std::string_view key, std::string_view /*value_name*/, std::string_view data,
                               const std::vector<std::string>& RegExcludeList) {
    return FirstIssue(kRegistryRules, RegistryEntry{.key = key, .data = data, .exclusions = RegExcludeList});
}

}  // namespace zorvel
