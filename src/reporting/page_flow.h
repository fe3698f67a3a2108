// What a report shows, block after block: its facts, charts, the headings of groups with their rows, its
// totals.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "reporting/report.h"

namespace zorvel {

enum class BlockKind {
    kExplanation,
    kFact,
    kChartHeading,
    kBar,
    kHeading,
    kNote,
    kRow,
    kNothing,
    kTotals,
    kEnd
};

// A place in the flow: a block, and a line of it.
struct FlowPosition {
    BlockKind kind = BlockKind::kEnd;
    std::size_t row = 0;  // of a heading and a note: the first of the group
    // The fact, the chart, or the group; of a row: the next group that begins behind it.
    std::size_t item = 0;
    std::size_t bar = 0;  // of the chart
    std::size_t line = 0;
    bool first_on_page = false;  // behind the first line: whether no row stood above the block where it began

    // True for blocks that stand below the columns' headings.
    bool InTable() const;

    bool operator==(const FlowPosition&) const = default;
};

// True when `left` comes ahead of `right`.
bool Precedes(const FlowPosition& left, const FlowPosition& right);

class PageFlow {
  public:
    // The report must outlive the object.
    explicit PageFlow(const Report& report) : report_(report), facts_(report.FactLines()) {}

    FlowPosition First() const;
    // The first line of the block behind that of `position`.
    FlowPosition Next(const FlowPosition& position) const;

    const std::vector<FactLine>& facts() const { return facts_; }

  private:
    FlowPosition Fact(std::size_t fact) const;
    FlowPosition Chart(std::size_t chart) const;
    // The row, or the next heading ahead of it: groups before `group` were passed.
    FlowPosition Row(std::size_t row, std::size_t group) const;
    FlowPosition Totals() const;

    const Report& report_;
    std::vector<FactLine> facts_;
};

}  // namespace zorvel
