// A report as one page for a browser.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "reporting/character_table.h"
#include "reporting/html_page.h"
#include "reporting/report_export.h"
#include "reporting/report_values.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// A block is what a browser lays out at once; a long table is cut into several.
constexpr std::size_t kRowsOfBlock = 100;
// Headings of groups begin below the page's own (h1).
constexpr std::size_t kFirstHeading = 2;
constexpr std::size_t kLastHeading = 6;
// The longest bar, as a share of its cell; the rest is for its number.
constexpr double kLongestBar = 80.0;

constexpr CharacterTable::Spellings kHtmlSpellings{};

std::string Percent(double share) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3f%%", share);
    return text;
}

class HtmlPage {
  public:
    HtmlPage(const Report& report, OutputFile& file)
        : report_(report), rows_(report.rows()), definition_(report.definition()), file_(file) {}

    void Write() {
        WriteHead();
        WriteSummary();
        WriteCharts();
        WriteBar();
        Put("<main id=\"report\">\n");
        if (rows_.size() == 0) Put("<p>There are no rows to show.</p>\n");
        WriteGroups();
        Put("</main>\n");
        WriteFooter();
    }

  private:
    void Put(std::string_view markup) { file_.Write(markup); }
    void PutText(std::string_view text) { spelling_.Write(text, file_); }

    const Report& report_;
    const ReportRows& rows_;
    const ReportDefinition& definition_;
    OutputFile& file_;
};

}  // namespace
}  // namespace zorvel
