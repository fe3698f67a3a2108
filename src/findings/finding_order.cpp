#include "findings/finding_order.h"

#include <algorithm>
#include <numeric>
#include <string>

#include "platform/code_page.h"

namespace zorvel {
namespace {

// The place of each element of a list when it is sorted; what is equal shares one.
template <typename Less>
std::vector<std::uint32_t> Ranks(std::size_t count, Less less) {
    std::vector<std::uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), less);
    std::vector<std::uint32_t> ranks(count);
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && less(order[i - 1], order[i])) ++rank;
        ranks[order[i]] = rank;
    }
    return ranks;
}

// The places of texts, sorted without regard to case.
template <typename TextOf>
std::vector<std::uint32_t> TextRanks(std::size_t count, TextOf text_of) {
    std::vector<std::string> texts(count);
    for (std::size_t i = 0; i < count; ++i)
        texts[i] = UpperCase(text_of(i));
    const auto bytes_less = [](char left, char right) {
        return static_cast<unsigned char>(left) < static_cast<unsigned char>(right);
    };
    return Ranks(count, [&](std::uint32_t left, std::uint32_t right) {
        return std::lexicographical_compare(texts[left].begin(), texts[left].end(), texts[right].begin(),
                                            texts[right].end(), bytes_less);
    });
}

}  // namespace

std::string FindingField(const FindingTable& table, const FindingStates& states, std::size_t row,
                         FindingColumn column) {
    switch (column) {
        case FindingColumn::kSeverity:
            return std::string(SeverityText(table.RuleOf(row).severity));
        case FindingColumn::kCode:
            return table.RuleOf(row).code;
        case FindingColumn::kWhat:
            return table.RuleOf(row).what;
        case FindingColumn::kApplication:
            return table.ApplicationOf(row).name;
        case FindingColumn::kContainer:
            return table.ApplicationOf(row).container;
        case FindingColumn::kWhere:
            return table.PlaceOf(row);
        case FindingColumn::kTarget:
            return table.TargetOf(row);
        case FindingColumn::kSource:
            return table.SourceOf(row);
        case FindingColumn::kReach:
            return ReachText(table.ApplicationOf(row).reach);
        case FindingColumn::kState:
            return std::string(StateText(states[row]));
    }
    return {};
}

FindingOrder::FindingOrder(const FindingTable& table, const FindingStates& states)
    : table_(table), states_(states) {
    const std::vector<FindingApplication>& applications = table.applications();
    applications_ = TextRanks(applications.size(), [&](std::size_t i) { return applications[i].name; });
    containers_ = TextRanks(applications.size(), [&](std::size_t i) { return applications[i].container; });
    reach_ = Ranks(applications.size(), [&](std::uint32_t left, std::uint32_t right) {
        return ReachesFurther(applications[left].reach, applications[right].reach);
    });
    applications_by_weight_ = Ranks(applications.size(), [this](std::uint32_t left, std::uint32_t right) {
        if (reach_[left] != reach_[right]) return reach_[left] < reach_[right];
        if (containers_[left] != containers_[right]) return containers_[left] < containers_[right];
        return applications_[left] < applications_[right];
    });
    const std::vector<FindingRule>& rules = table.rules();
    codes_ = TextRanks(rules.size(), [&](std::size_t i) { return rules[i].code; });
    whats_ = TextRanks(rules.size(), [&](std::size_t i) { return rules[i].what; });
    places_ = TextRanks(table.places().size(), [&](std::size_t i) { return table.places()[i]; });
}

std::uint64_t FindingOrder::WeightOf(const Finding& finding) const {
    constexpr unsigned kSeverityShift = 30;  // more applications than that do not fit into memory
    return static_cast<std::uint64_t>(table_.rules()[finding.rule].severity) << kSeverityShift |
           applications_by_weight_[finding.application];
}

std::uint64_t FindingOrder::KeyOf(std::size_t row, FindingColumn column) const {
    constexpr unsigned kHalf = 32;
    const Finding& finding = table_[row];
    const auto of_text = [this](PathTexts::Text text) {
        return std::uint64_t{texts_[text.folder]} << kHalf | texts_[text.name];
    };
    std::uint64_t place = 0;
    switch (column) {
        case FindingColumn::kSeverity:
            break;
        case FindingColumn::kCode:
            place = codes_[finding.rule];
            break;
        case FindingColumn::kWhat:
            place = whats_[finding.rule];
            break;
        case FindingColumn::kApplication:
            place = applications_[finding.application];
            break;
        case FindingColumn::kContainer:
            place = containers_[finding.application];
            break;
        case FindingColumn::kWhere:
            place = places_[finding.place];
            break;
        case FindingColumn::kTarget:
            return of_text(finding.target);
        case FindingColumn::kSource:
            return of_text(finding.source);
        case FindingColumn::kReach:
            place = reach_[finding.application];
            break;
        case FindingColumn::kState:
            place = static_cast<std::uint64_t>(states_[row]);
            break;
    }
    return place << kHalf | WeightOf(finding);
}

void FindingOrder::Prepare(FindingColumn column) {
    const bool text = column == FindingColumn::kTarget || column == FindingColumn::kSource;
    if (text && texts_.empty()) texts_ = table_.texts().Ranks();
}

void FindingOrder::Sort(std::vector<std::uint32_t>& rows, FindingColumn column, bool descending) {
    struct Entry {
        std::uint64_t key;
        std::uint32_t row;
    };
    Prepare(column);
    std::vector<Entry> entries(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        entries[i] = {KeyOf(rows[i], column), rows[i]};
    std::sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        return left.key != right.key ? left.key < right.key : left.row < right.row;
    });
    if (descending) std::reverse(entries.begin(), entries.end());
    std::transform(entries.begin(), entries.end(), rows.begin(),
                   [](const Entry& entry) { return entry.row; });
}

}  // namespace zorvel
