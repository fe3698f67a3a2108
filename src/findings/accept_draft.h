// What the dialog "Accept Findings" asks for: entries for the list of accepted findings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "findings/findings.h"

namespace zorvel {

class AcceptDraft {
  public:
    // Proposes the narrowest patterns that cover the rows `chosen` of the findings, of which there is at
    // least one.
    AcceptDraft(const Findings& findings, std::vector<std::uint32_t> chosen);

    // The codes of the chosen findings, sorted: there will be an entry for each.
    const std::vector<std::string>& codes() const { return codes_; }

    // What the user may change. `target` empty means any; `until` empty means for ever.
    std::string application;
    std::string target;
    std::string reason;
    std::string until;
    std::string by;

    // "Covers 12 findings, 3 of the 4 that are chosen", or what is still missing.
    std::string Coverage() const;
    // What is wrong with the texts, or nothing.
    std::string Fault() const;
    // The entries; only without a fault.
    AcceptedFindings Entries() const;

  private:
    AcceptedFinding EntryFor(const std::string& code) const;

    const Findings& findings_;
    std::vector<std::uint32_t> chosen_;
    std::vector<std::string> codes_;
};

// The pattern of full names that two names have in common: the name, when they are the same, or "*" and the
// containers that they share.
std::string CommonNames(std::string_view pattern, std::string_view name);

}  // namespace zorvel
