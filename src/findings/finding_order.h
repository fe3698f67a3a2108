// The columns of a list of findings, and its order by each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "findings/finding_states.h"
#include "findings/finding_table.h"

namespace zorvel {

enum class FindingColumn : std::size_t {
    kSeverity,
    kCode,
    kWhat,
    kApplication,
    kContainer,
    kWhere,
    kTarget,
    kSource,
    kReach,
    kState,
};
inline constexpr std::array<std::string_view, 10> kFindingColumns = {
    "Severity", "Code", "What", "Application", "Container", "Where", "Target", "Source", "Reach", "State"};

// A field as it is shown.
std::string FindingField(const FindingTable& table, const FindingStates& states, std::size_t row,
                         FindingColumn column);

// Sorts rows of a table. What it finds out about the table it keeps for the next time.
class FindingOrder {
  public:
    // Both must outlive the object.
    FindingOrder(const FindingTable& table, const FindingStates& states);

    // Sorts rows by a column, texts without regard to case. By severity means: the most severe first, and of
    // equally severe ones those whose application reaches furthest; by reach, the furthest first. Rows that
    // are the same in a column stand in the order by severity, but for targets and sources, where they stand
    // in that of the table.
    void Sort(std::vector<std::uint32_t>& rows, FindingColumn column, bool descending = false);

  private:
    std::uint64_t WeightOf(const Finding& finding) const;
    std::uint64_t KeyOf(std::size_t row, FindingColumn column) const;
    void Prepare(FindingColumn column);

    const FindingTable& table_;
    const FindingStates& states_;
    std::vector<std::uint32_t>
        applications_by_weight_;               // the place of each application, furthest reach first
    std::vector<std::uint32_t> reach_;         // the same; equal for those that reach equally far
    std::vector<std::uint32_t> applications_;  // the place of each by name, and so on
    std::vector<std::uint32_t> containers_;    // of each application
    std::vector<std::uint32_t> codes_;
    std::vector<std::uint32_t> whats_;
    std::vector<std::uint32_t> places_;
    std::vector<std::uint32_t> texts_;  // of the parts of targets and sources; empty until needed
};

}  // namespace zorvel
