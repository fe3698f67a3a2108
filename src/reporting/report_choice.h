// What the user chose for a report; it lives as long as the program runs.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

// The sort choices of the report options.
inline constexpr std::string_view kByApplicationName = "Application Name";
inline constexpr std::string_view kByApplicationCaption = "Application Caption";
inline constexpr std::string_view kByIconOrder = "Application Icon/Run Order";

struct ReportChoice {
    std::string caption;         // of the menu entry
    std::string dataset;         // file name in Databases
    std::string sort;            // a sort choice, or empty: the definition's own order
    bool descending = false;     // of the sort's second column
    std::string excluded_codes;  // issue codes in apostrophes, joined by commas; empty: none excluded
    bool cancelled = false;
};

}  // namespace zorvel
