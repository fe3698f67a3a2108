// The fourteen reports: where each stands in the menu, which file defines it, and what the report options may
// change of its query.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "reporting/report_choice.h"

namespace zorvel {

struct CatalogueReport {
    std::string_view group;       // the submenu
    std::string_view caption;     // of the menu entry; the key of the catalogue
    std::string_view definition;  // file name in Reports
    bool by_name = false;         // the sort choices that are honoured
    bool by_caption = false;
    bool by_icon_order = false;
    std::string_view secondary = {};  // sort columns behind the chosen ones, with a leading comma
    bool issue_filter = false;

    bool Honours(std::string_view sort) const;
    // The text that takes the place of the definition's order: container, then the column of `sort` in the
    // chosen direction, then the secondary columns. Empty when `sort` is not honoured.
    std::string SortText(std::string_view sort, bool descending) const;
    // The WHERE clause that leaves the excluded issue codes out; empty when there are none, or when the
    // report is not about issues.
    std::string FilterText(std::string_view excluded_codes) const;
};

// The report over the master catalogue, which has no options.
inline constexpr std::string_view kCaptureDetailsReport = "Capture Details Summary";

// All reports in the order of the menu.
std::span<const CatalogueReport> CatalogueReports();
// The report of a caption, or null.
const CatalogueReport* FindReport(std::string_view caption);

}  // namespace zorvel
