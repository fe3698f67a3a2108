// Issue rules as table rows, tried in order.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "issues/issue_catalogue.h"

namespace zorvel {

// The answer of a rule procedure that found nothing.
inline constexpr std::string_view kNoIssue = "OK";

template <typename Subject>
struct IssueRule {
    Issue issue;
    bool (*holds)(const Subject& subject);
};

// The code of the first rule that holds for `subject`, or "OK".
template <typename Subject, std::size_t Count>
std::string_view FirstIssue(const std::array<IssueRule<Subject>, Count>& rules, const Subject& subject) {
    for (const IssueRule<Subject>& rule : rules) {
        if (rule.holds(subject)) return CodeOf(rule.issue);
    }
    return kNoIssue;
}

}  // namespace zorvel
