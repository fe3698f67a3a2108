#include "reporting/page_flow.h"

#include <limits>
#include <tuple>

namespace zorvel {
namespace {

bool IsOf(const FlowPosition& position, BlockKind first, BlockKind last) {
    return position.kind >= first && position.kind <= last;
}

// Bars stand among charts, and rows among headings: a row behind those of the groups that it begins.
auto Key(const FlowPosition& position) {
    BlockKind section = position.kind;
    if (section == BlockKind::kBar) section = BlockKind::kChartHeading;
    if (position.InTable()) section = BlockKind::kHeading;
    const bool row = position.kind == BlockKind::kRow;
    const std::size_t part = position.kind == BlockKind::kNote  ? 1
                             : position.kind == BlockKind::kBar ? position.bar + 1
                                                                : 0;
    return std::tuple(section, position.row, row ? std::numeric_limits<std::size_t>::max() : position.item,
                      part, position.line);
}

}  // namespace

bool FlowPosition::InTable() const {
    return IsOf(*this, BlockKind::kHeading, BlockKind::kRow);
}

bool Precedes(const FlowPosition& left, const FlowPosition& right) {
    return Key(left) < Key(right);
}

FlowPosition PageFlow::First() const {
    return report_.definition().explanation.empty() ? Fact(0) : FlowPosition{.kind = BlockKind::kExplanation};
}

FlowPosition PageFlow::Next(const FlowPosition& position) const {
    switch (position.kind) {
        case BlockKind::kExplanation:
            return Fact(0);
        case BlockKind::kFact:
            return Fact(position.item + 1);
        case BlockKind::kChartHeading:
            return {.kind = BlockKind::kBar, .item = position.item};
        case BlockKind::kBar:
            if (position.bar + 1 < report_.rows().charts()[position.item].size())
                return {.kind = BlockKind::kBar, .item = position.item, .bar = position.bar + 1};
            return Chart(position.item + 1);
        case BlockKind::kHeading:
            if (!report_.Note(position.item).empty())
                return {.kind = BlockKind::kNote, .row = position.row, .item = position.item};
            return Row(position.row, position.item + 1);
        case BlockKind::kNote:
            return Row(position.row, position.item + 1);
        case BlockKind::kRow:
            return Row(position.row + 1, position.item);
        case BlockKind::kNothing:
            return Totals();
        default:
            return {};
    }
}

FlowPosition PageFlow::Fact(std::size_t fact) const {
    if (fact < facts_.size()) return {.kind = BlockKind::kFact, .item = fact};
    return Chart(0);
}

FlowPosition PageFlow::Chart(std::size_t chart) const {
    // Without rows there are no bars, in no chart.
    if (report_.rows().size() == 0) return {.kind = BlockKind::kNothing};
    if (chart < report_.rows().charts().size()) return {.kind = BlockKind::kChartHeading, .item = chart};
    return Row(0, 0);
}

FlowPosition PageFlow::Row(std::size_t row, std::size_t group) const {
    if (row == report_.rows().size()) return Totals();
    const std::vector<RowGroup>& groups = report_.rows().groups();
    if (group < groups.size() && groups[group].begin == row)
        return {.kind = BlockKind::kHeading, .row = row, .item = group};
    return {.kind = BlockKind::kRow, .row = row, .item = group};
}

FlowPosition PageFlow::Totals() const {
    if (report_.definition().totals.empty()) return {};
    return {.kind = BlockKind::kTotals};
}

}  // namespace zorvel
