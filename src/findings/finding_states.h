// Which findings are accepted, by which entry of the list.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "findings/accepted_findings.h"
#include "findings/finding_table.h"
#include "platform/interruption.h"

namespace zorvel {

enum class FindingState : std::uint8_t {
    kOpen,
    kAccepted,
    kExpired,  // it was accepted for a time that has passed: it counts as open again
};
inline constexpr std::array<std::string_view, 3> kFindingStates = {"open", "accepted", "expired"};

inline std::string_view StateText(FindingState state) {
    return kFindingStates.at(static_cast<std::size_t>(state));
}
// True for what is still to be done.
inline bool CountsAsOpen(FindingState state) {
    return state != FindingState::kAccepted;
}

// The rows of a table that an entry of the list covers, in their order.
std::vector<std::uint32_t> RowsCoveredBy(const AcceptedFinding& accepted, const FindingTable& table);

class FindingStates {
  public:
    // The states of all rows of `table` on the day `today`. Of several entries that cover a finding the first
    // that counts is told, or else the first.
    FindingStates(const FindingTable& table, const AcceptedFindings& accepted, const Date& today);

    FindingState operator[](std::size_t row) const { return states_[row]; }
    // The number of the entry that makes a finding accepted or expired; nothing for an open one.
    std::optional<std::size_t> EntryOf(std::size_t row) const {
        if (states_[row] == FindingState::kOpen) return std::nullopt;
        return entries_[row];
    }
    // How many findings each entry covers, whether it counts or not.
    const std::vector<std::size_t>& covered() const { return covered_; }

  private:
    std::vector<FindingState> states_;
    std::vector<std::uint32_t> entries_;  // empty without entries
    std::vector<std::size_t> covered_;
};

}  // namespace zorvel
