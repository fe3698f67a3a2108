// The predefined searches of the Find box.
#pragma once

#include <array>
#include <string_view>

namespace zorvel {

struct PredefinedSearch {
    std::string_view name;
    std::string_view expression;   // matched without regard to case
    std::string_view description;  // shown when the search is chosen
};

// In the order of the Find box.
inline constexpr std::array<PredefinedSearch, 5> PredefinedSearches = {{
    {.name = "IP Addresses",
     .expression = R"([0-9]{1,3}\.[0-9]{1,3}\.[0-9]{1,3}\.[0-9]{1,3})",
     .description = "Find potential IP addresses by looking for dot seperated groups such as 32.78.4.122 or "
                    "9.201.65.12 - other than their structure, addresses are NOT checked for validity"},
    {.name = "Executables - Basic",
     .expression = R"(\.bat\b|\.cmd\b|\.com\b|\.exe\b|\.vbs\b)",
     .description = "Basic executable file search - finds 'normal' executables such as .bat, .cmd, .com, "
                    ".exe and .vbs"},
    {.name = "Executables - Extended",
     .expression = R"(\.bat\b|\.cmd\b|\.com\b|\.exe\b|\.vbs\b|\.inf\b|\.js\b|\.jse\b|\.lnk\b|\.msi\b|)"
                   R"(\.mst\b|\.pif\b|\.pl\b|\.pm\b|\.reg\b|\.scf\b|\.vb\b|\.vbe\b|\.ws\b|\.wsc\b|)"
                   R"(\.wsf\b)",
     .description = "Extended executable file search - as well as 'normal' executables such as .bat, .cmd, "
                    ".com, .exe and .vbs also finds other potentially executable files including .inf, .js, "
                    ".jse, .lnk, .msi, .mst, .pif, .pl, .pm, .reg, .scf, .vb, .vbe, .ws, .wsc and .wsf"},
    {.name = "MS Office Documents",
     .expression = R"(\.doc\b|\.xls\b|\.dot\b|\.ppt\b|\.pps\b|\.mpp\b|\.pot\b|\.xla\b|\.xlt\b)",
     .description = "Find Microsoft Office file types such as .doc, .dot, .xls, .ppt, .pps etc."},
    {.name = "Web Addresses",
     .expression = R"(http://|https://|ftp://|www\.)",
     .description = "Find items beginning with http://, https://, ftp:// or www."},
}};

}  // namespace zorvel
