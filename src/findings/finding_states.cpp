#include "findings/finding_states.h"

#include <algorithm>
#include <string>

#include "findings/name_pattern.h"

namespace zorvel {
namespace {

// The rows of each rule, so that an entry looks at those of its own code alone.
class RowsByRule {
  public:
    explicit RowsByRule(const FindingTable& table) : rows_(table.rules().size()) {
        std::vector<std::size_t> counts(rows_.size());
        for (std::size_t row = 0; row < table.size(); ++row)
            ++counts[table[row].rule];
        for (std::size_t rule = 0; rule < rows_.size(); ++rule)
            rows_[rule].reserve(counts[rule]);
        for (std::size_t row = 0; row < table.size(); ++row)
            rows_[table[row].rule].push_back(static_cast<std::uint32_t>(row));
    }
    const std::vector<std::uint32_t>& Of(std::size_t rule) const { return rows_[rule]; }

  private:
    std::vector<std::vector<std::uint32_t>> rows_;
};

class EntryMatcher {
  public:
    EntryMatcher(const AcceptedFinding& accepted, const FindingTable& table)
        : table_(table), applications_(table.applications().size()) {
        const NamePattern application(accepted.application);
        for (std::size_t i = 0; i < applications_.size(); ++i)
            applications_[i] = application.Matches(table.applications()[i].full_name);
        if (accepted.target) target_.emplace(NamePattern::WithWholeHive(*accepted.target));
    }
    // Whether an entry covers a row of its own code.
    bool Covers(std::size_t row) {
        const Finding& finding = table_[row];
        if (!applications_[finding.application]) return false;
        if (!target_) return true;
        text_.clear();
        table_.texts().AppendTo(text_, finding.target);
        return target_->Matches(text_);
    }

  private:
    const FindingTable& table_;
    std::vector<unsigned char> applications_;
    std::optional<NamePattern> target_;
    std::string text_;
};

// The number of a code's rule; that of no rule when the table has no finding of it.
std::size_t RuleNumber(const FindingTable& table, std::string_view code) {
    const auto& rules = table.rules();
    return static_cast<std::size_t>(
        std::find_if(rules.begin(), rules.end(),
                     [code](const FindingRule& rule) { return rule.code == code; }) -
        rules.begin());
}

}  // namespace

std::vector<std::uint32_t> RowsCoveredBy(const AcceptedFinding& accepted, const FindingTable& table) {
    std::vector<std::uint32_t> rows;
    const std::size_t rule = RuleNumber(table, accepted.code);
    EntryMatcher matcher(accepted, table);
    for (std::size_t row = 0; row < table.size(); ++row)
        if (table[row].rule == rule && matcher.Covers(row)) rows.push_back(static_cast<std::uint32_t>(row));
    return rows;
}

FindingStates::FindingStates(const FindingTable& table, const AcceptedFindings& accepted, const Date& today)
    : states_(table.size(), FindingState::kOpen), covered_(accepted.size()) {
    if (accepted.empty()) return;
    entries_.resize(table.size());
    const RowsByRule rows(table);
    for (std::size_t entry = 0; entry < accepted.size(); ++entry) {
        const std::size_t rule = RuleNumber(table, accepted[entry].code);
        if (rule == table.rules().size()) continue;
        const FindingState state =
            accepted[entry].IsExpired(today) ? FindingState::kExpired : FindingState::kAccepted;
        EntryMatcher matcher(accepted[entry], table);
        for (const std::uint32_t row : rows.Of(rule)) {
            if (!matcher.Covers(row)) continue;
            ++covered_[entry];
            const bool better = states_[row] == FindingState::kOpen ||
                                (states_[row] == FindingState::kExpired && state == FindingState::kAccepted);
            if (!better) continue;
            states_[row] = state;
            entries_[row] = static_cast<std::uint32_t>(entry);
        }
    }
}

}  // namespace zorvel
