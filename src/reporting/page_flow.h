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

// A place in the flow: which block, and which of its lines. What `row`, `item` and `bar` say depends on the
// kind of the block; what it does not need is 0. All are counted from 0.
struct FlowPosition {
    BlockKind kind = BlockKind::kEnd;
    // For a row: its number. For the heading or the note of a group: the group's first row.
    std::size_t row = 0;
    // For a fact: its number. For the heading or a bar of a chart: the chart's number. For the heading or the
    // note of a group: the group's number. For a row: the number of the first group that begins after it.
    std::size_t item = 0;
    // For a bar: its number in the chart.
    std::size_t bar = 0;
    // The line of the block. A block that did not fit on a page goes on with this line on the next one.
    std::size_t line = 0;
    // For a block that goes on from an earlier page (`line` is not 0): true when no row stood above it on the
    // page where it began. Only then a row shows values that repeat those of the row above, and so its lines
    // depend on it.
    bool first_on_page = false;

    // True for blocks that stand below the columns' headings.
    bool InTable() const;

    bool operator==(const FlowPosition&) const = default;
};

// True when `left` comes before `right` in the flow.
bool Precedes(const FlowPosition& left, const FlowPosition& right);

class PageFlow {
  public:
    // The report must outlive the object.
    explicit PageFlow(const Report& report) : report_(report), facts_(report.FactLines()) {}

    // The first line of the first block.
    FlowPosition First() const;
    // The first line of the block that follows the block of `position`; kEnd follows the last.
    FlowPosition Next(const FlowPosition& position) const;

    const std::vector<FactLine>& facts() const { return facts_; }

  private:
    FlowPosition Fact(std::size_t fact) const;
    FlowPosition Chart(std::size_t chart) const;
    // The position of `row`; or, when a group begins with that row whose heading has not been shown yet, of
    // that heading. The headings of the groups before number `group` have been shown.
    FlowPosition Row(std::size_t row, std::size_t group) const;
    FlowPosition Totals() const;

    const Report& report_;
    std::vector<FactLine> facts_;
};

}  // namespace zorvel
