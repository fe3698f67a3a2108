// What there is to know of one finding: its rule, the entry as it stands in the dataset, and whom its
// application is for.
#pragma once

#include <string>
#include <vector>

#include "findings/findings.h"

namespace zorvel {

struct FindingDetails {
    // A line of the table that the entry is in.
    struct Entry {
        std::vector<std::string> fields;
        bool is_own = false;  // the finding's; the others stand beside it
    };

    std::string rule;      // "FILEPWL: Windows password list (.PWL)"
    std::string severity;  // "critical: The file holds ..."
    std::string remedy;
    std::string remark;       // may be empty
    std::string application;  // full name
    std::string reach;
    std::string acceptance;                 // of an accepted or expired one: the reason, and so on
    std::vector<std::string> columns;       // of the entries; empty when the finding is about no entry
    std::vector<Entry> entries;             // with the neighbours, in the order of the dataset
    std::vector<std::string> associations;  // "group SALES.LEEDS.CORP (12 members)"
};

// Raises 0x80004005.
FindingDetails DetailsOf(const Findings& findings, std::size_t row);

// "accepted until 2027-06-01 by LEEDS desktop team: File server FS1 stays"
std::string AcceptanceText(const AcceptedFinding& accepted, FindingState state);

}  // namespace zorvel
