#include "findings/accept_draft.h"

#include <algorithm>
#include <set>
#include <utility>

#include "platform/code_page.h"
#include "shell/formats.h"

namespace zorvel {

std::string CommonNames(std::string_view pattern, std::string_view name) {
    if (EqualIgnoringCase(pattern, name)) return std::string(pattern);
    // Both cut at dots, from the end.
    std::size_t common = 0;
    for (std::size_t length = 1; length <= std::min(pattern.size(), name.size()); ++length) {
        const std::size_t at = name.size() - length;
        if (UpperChar(pattern[pattern.size() - length]) != UpperChar(name[at])) break;
        if (name[at] == '.' && (at == 0 || name[at - 1] != '\\')) common = length;
    }
    return '*' + std::string(name.substr(name.size() - common));
}

AcceptDraft::AcceptDraft(const Findings& findings, std::vector<std::uint32_t> chosen)
    : findings_(findings), chosen_(std::move(chosen)) {
    const FindingTable& table = findings.table();
    std::set<std::string> codes;
    application = table.ApplicationOf(chosen_.front()).full_name;
    target = table.TargetOf(chosen_.front());
    for (const std::uint32_t row : chosen_) {
        codes.insert(table.RuleOf(row).code);
        application = CommonNames(application, table.ApplicationOf(row).full_name);
        if (!target.empty() && !EqualIgnoringCase(target, table.TargetOf(row))) target.clear();
    }
    codes_.assign(codes.begin(), codes.end());
}

AcceptedFinding AcceptDraft::EntryFor(const std::string& code) const {
    AcceptedFinding entry;
    entry.code = code;
    entry.application = application;
    if (!target.empty()) entry.target = target;
    entry.reason = reason;
    if (!until.empty()) entry.until = DateFrom(until);
    entry.by = by;
    return entry;
}

std::string AcceptDraft::Fault() const {
    if (!until.empty() && !DateFrom(until))
        return "\"until\": expected a date, such as 2027-06-01, or nothing";
    for (const std::string& code : codes_)
        if (std::string fault = FaultOf(EntryFor(code)); !fault.empty()) return fault;
    return {};
}

AcceptedFindings AcceptDraft::Entries() const {
    AcceptedFindings entries;
    for (const std::string& code : codes_)
        entries.push_back(EntryFor(code));
    return entries;
}

std::string AcceptDraft::Coverage() const {
    std::set<std::uint32_t> covered;
    for (const AcceptedFinding& entry : Entries())
        for (const std::uint32_t row : RowsCoveredBy(entry, findings_.table()))
            covered.insert(row);
    const auto count = static_cast<std::size_t>(std::count_if(
        chosen_.begin(), chosen_.end(), [&](std::uint32_t row) { return covered.count(row) != 0; }));
    return "Covers " + GroupedCount(covered.size()) + (covered.size() == 1 ? " finding" : " findings") +
           ", " + GroupedCount(count) + " of the " + GroupedCount(chosen_.size()) + " chosen";
}

}  // namespace zorvel
