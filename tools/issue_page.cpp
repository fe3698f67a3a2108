#include "issue_page.h"

#include <string_view>

#include "issues/issue_catalogue.h"

namespace zorvel::tools {
namespace {

constexpr std::string_view kHead =
    "# Issues\n\n"
    "What an analysis finds, by the groups of the report options. `./dev docs` makes this page from the\n"
    "catalogue of issues, `src/issues/issue_catalogue.cpp`.\n\n"
    "Severities: critical, where secrets or data of other users leave the workstation they belong to; high, "
    "where\n"
    "workstations break; medium, where something breaks in another place or at another site; low, what is "
    "slow,\n"
    "untidy or undocumented.\n";

// A text as a cell of a table.
std::string Cell(std::string_view text) {
    std::string cell;
    for (const char character : text) {
        if (character == '|' || character == '*' || character == '_' || character == '\\') cell += '\\';
        cell += character;
    }
    return cell;
}

std::string Row(const IssueDescription& issue) {
    std::string row = "| `" + std::string(issue.code) + "` | " + Cell(issue.short_text) + " | " +
                      std::string(SeverityText(issue.severity)) + ": " + Cell(issue.severity_reason) + " | " +
                      Cell(RaiserText(issue.raiser)) + " | " + Cell(issue.remedy);
    if (!issue.remark.empty()) row += " *" + Cell(issue.remark) + "*";
    return row + " |\n";
}

}  // namespace

std::string IssuePage() {
    std::string page(kHead);
    for (std::size_t category = 0; category < kIssueCategories.size(); ++category) {
        page += "\n## " + std::string(kIssueCategories.at(category).text) +
                "\n\n| code | what | severity | raised by | what to do |\n|---|---|---|---|---|\n";
        for (const IssueDescription& issue : IssueCatalogue()) {
            if (static_cast<std::size_t>(issue.category) == category) page += Row(issue);
        }
    }
    return page;
}

}  // namespace zorvel::tools
