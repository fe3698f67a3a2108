// A report as one page for a browser.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "reporting/html_page.h"
#include "reporting/report_export.h"
#include "reporting/report_values.h"
#include "shell/character_table.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

// A block is what a browser lays out at once; a long table is cut into several.
constexpr std::size_t kRowsOfBlock = 100;
// Headings of groups begin below the page's own (h1) and end at h6.
constexpr std::size_t kFirstHeading = 2;
constexpr std::size_t kLastHeading = 6;
// The longest bar, as a share of its cell; the rest is for its number.
constexpr double kLongestBar = 80.0;

constexpr double kWhole = 100.0;

std::string Number(double number) {
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.3f", number);
    return {text.data(), static_cast<std::size_t>(length)};
}

class HtmlPage {
  public:
    HtmlPage(const Report& report, OutputFile& file, const AskInterrupted& ask)
        : report_(report), rows_(report.rows()), definition_(report.definition()), file_(file), point_(ask) {
        markup_.Spell('&', "&amp;");
        markup_.Spell('<', "&lt;");
        markup_.Spell('>', "&gt;");
        markup_.Spell('"', "&quot;");
        markup_.Spell('\'', "&#39;");
    }

    void Write() {
        WriteHead();
        Put("<body>\n<header>\n");
        PutElement("h1", definition_.title);
        PutUnlessEmpty("p", definition_.explanation);
        WriteFacts();
        WriteTotals();
        Put("</header>\n");
        WriteCharts();
        WriteBar();
        Put("<main id=\"report\">\n");
        if (rows_.size() == 0) PutElement("p", kNothingToReport);
        if (definition_.groups.empty()) WriteRows(0, rows_.size(), "aria-label=\"Rows\"");
        WriteGroups();
        Put("</main>\n");
        if (!report_.facts().generated.empty())
            PutElement("footer", "Generated " + report_.facts().generated);
        Put("<script>");
        Put(kPageScript);
        Put("</script>\n</body>\n</html>\n");
    }

  private:
    void Put(std::string_view markup) { file_.Write(markup); }
    // Text as it is displayed, without a meaning in the markup.
    void PutText(std::string_view text, ValueFormat format = ValueFormat::kText) {
        markup_.Write(DisplayValue(text, format, scratch_), file_);
    }
    void PutElement(std::string_view name, std::string_view text) {
        Put("<");
        Put(name);
        Put(">");
        PutText(text);
        Put("</");
        Put(name);
        Put(">\n");
    }
    void PutUnlessEmpty(std::string_view name, std::string_view text) {
        if (!text.empty()) PutElement(name, text);
    }
    // A line of a list of names and values.
    void PutPair(std::string_view name, std::string_view value) {
        Put("<div>");
        PutElement("dt", name);
        PutElement("dd", value);
        Put("</div>\n");
    }

    void WriteHead() {
        Put("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
            "style-src 'unsafe-inline'; script-src '");
        Put(kPageScriptHash);
        Put("'; base-uri 'none'; form-action 'none'\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n");
        PutElement("title", definition_.title);
        Put("<style>");
        Put(kPageStyle);
        WriteColumnStyles();
        WritePageStyle();
        Put("</style>\n</head>\n");
    }

    // The same widths and alignments for all tables, so that columns run through the whole page.
    void WriteColumnStyles() {
        double sum = 0;
        for (const ReportColumn& column : definition_.columns)
            sum += column.width;
        for (std::size_t i = 0; i < definition_.columns.size(); ++i) {
            const ReportColumn& column = definition_.columns[i];
            const std::string child = ":nth-child(" + std::to_string(i + 1) + ')';
            Put(".rows th" + child + " { width: " + Number(kWhole * column.width / sum) + "%; }\n");
            // "Yes" is shown whole where it is wider than its column.
            if (column.format == ValueFormat::kYesNo) {
                Put(".rows td" + child + " { overflow-wrap: normal; padding-left: 0; padding-right: 0; }\n");
            }
            if (column.alignment == ColumnAlignment::kLeft) continue;
            Put(".rows th" + child + ", .rows td" + child + " { text-align: ");
            Put(column.alignment == ColumnAlignment::kRight ? "right; }\n" : "center; }\n");
        }
    }

    // On paper the page is as the definition has it.
    void WritePageStyle() {
        const ReportPage& page = definition_.page;
        Put("@page { size: " + Number(page.width) + "pt " + Number(page.height) +
            "pt; margin: " + Number(page.margin) +
            "pt; }\n@media print { body { font-size: " + Number(page.text_size) + "pt; } }\n");
    }

    void WriteFacts() {
        const std::vector<FactLine> facts = report_.FactLines();
        if (facts.empty()) return;
        Put("<dl>\n");
        for (const FactLine& fact : facts)
            PutPair(fact.name, fact.value);
        Put("</dl>\n");
    }

    void WriteTotals() {
        if (definition_.totals.empty()) return;
        Put("<dl class=\"totals\">\n");
        for (std::size_t total = 0; total < definition_.totals.size(); ++total)
            PutPair(definition_.totals[total].heading, GroupedOrZero(rows_.Total(total)));
        Put("</dl>\n");
    }

    void WriteCharts() {
        if (definition_.charts.empty() || rows_.size() == 0) return;
        Put("<div class=\"charts\">\n");
        for (std::size_t chart = 0; chart < definition_.charts.size(); ++chart)
            WriteChart(definition_.charts[chart].heading, rows_.charts()[chart]);
        Put("</div>\n");
    }

    void WriteChart(std::string_view heading, const std::vector<ChartBar>& bars) {
        const std::int64_t longest = std::max<std::int64_t>(bars.front().value, 1);
        Put("<section>\n");
        PutElement("h2", heading);
        Put("<table>\n");
        for (const ChartBar& bar : bars) {
            const double share =
                static_cast<double>(std::max<std::int64_t>(bar.value, 0)) / static_cast<double>(longest);
            Put("<tr><th scope=\"row\">");
            PutText(bar.label);
            Put("</th><td>");
            if (!bar.is_rest) Put("<i style=\"width: " + Number(kLongestBar * share) + "%\"></i>");
            Put(GroupedOrZero(bar.value));
            Put("</td></tr>\n");
        }
        Put("</table>\n</section>\n");
    }

    // The controls, which show themselves when scripts run, and the headings that stay in sight. They are
    // those of all tables, which have them once more for readers of the page's structure.
    void WriteBar() {
        if (rows_.size() == 0) return;
        Put("<div class=\"bar\">\n<div class=\"tools\" id=\"tools\" role=\"search\" hidden>\n"
            "<label>Filter <input type=\"search\" id=\"filter\" autocomplete=\"off\" spellcheck=\"false\" "
            "aria-controls=\"report\"></label>\n");
        if (!definition_.groups.empty()) {
            Put("<button type=\"button\" id=\"expand\">Expand all</button>\n"
                "<button type=\"button\" id=\"collapse\">Collapse all</button>\n");
        }
        Put("<output id=\"count\" for=\"filter\"></output>\n</div>\n"
            "<table class=\"rows\" aria-hidden=\"true\">\n");
        WriteHeadings();
        Put("</table>\n</div>\n");
    }

    void WriteHeadings() {
        Put("<thead><tr>");
        for (const ReportColumn& column : definition_.columns) {
            Put(column.turned ? "<th scope=\"col\"><span>" : "<th scope=\"col\">");
            PutText(column.heading);
            Put(column.turned ? "</span></th>" : "</th>");
        }
        Put("</tr></thead>\n");
    }

    void WriteGroups() {
        const std::vector<RowGroup>& groups = rows_.groups();
        std::size_t open = 0;
        const auto close_to = [&](std::size_t level) {
            for (; open > level; --open)
                Put("</details>\n");
        };
        for (std::size_t group = 0; group < groups.size(); ++group) {
            close_to(groups[group].level);
            WriteGroupHeading(group);
            ++open;
            if (open == definition_.groups.size()) {
                WriteRows(groups[group].begin, groups[group].end,
                          "aria-labelledby=\"g" + std::to_string(group) + '"');
            }
        }
        close_to(0);
    }

    void WriteGroupHeading(std::size_t group) {
        const std::size_t level = rows_.groups()[group].level;
        const std::string heading = 'h' + std::to_string(std::min(kFirstHeading + level, kLastHeading));
        Put(level == 0 ? "<details class=\"outer\"" : "<details");
        Put(rows_.BeginsPage(group) ? " style=\"break-before: page\" open>" : " open>");
        Put("<summary><" + heading + " id=\"g" + std::to_string(group) + "\">");
        PutText(report_.Heading(group));
        Put("</" + heading + '>');
        std::string totals;
        for (const std::string& total : report_.GroupTotals(group))
            totals += (totals.empty() ? "" : ", ") + total;
        if (!totals.empty()) {
            Put("<span>");
            PutText(totals);
            Put("</span>");
        }
        Put("</summary>\n");
        const std::string note = report_.Note(group);
        if (note.empty()) return;
        Put("<p class=\"note\">");
        PutText(note);
        Put("</p>\n");
    }

    void WriteRows(std::size_t begin, std::size_t end, const std::string& name) {
        for (std::size_t first = begin; first < end; first += kRowsOfBlock) {
            const std::size_t behind = std::min(first + kRowsOfBlock, end);
            Put("<div class=\"block\" style=\"--n: " + std::to_string(behind - first) +
                "\"><table class=\"rows\" " + name + ">\n");
            WriteHeadings();
            Put("<tbody>\n");
            for (std::size_t row = first; row < behind; ++row)
                WriteRow(row);
            Put("</tbody></table></div>\n");
        }
    }

    // Values that are left out because they repeat the row above's are there, out of sight: the filter finds
    // them, and shows them when the row above is hidden.
    void WriteRow(std::size_t row) {
        point_.Pass();
        Put("<tr>");
        for (std::size_t i = 0; i < definition_.columns.size(); ++i) {
            Put(rows_.Repeats(row, i) ? "<td class=\"again\">" : "<td>");
            PutText(rows_.ColumnValue(row, i), definition_.columns[i].format);
            Put("</td>");
        }
        Put("</tr>\n");
    }

    const Report& report_;
    const ReportRows& rows_;
    const ReportDefinition& definition_;
    OutputFile& file_;
    InterruptionPoint point_;
    CharacterTable markup_;
    std::string scratch_;
};

}  // namespace

void WriteHtml(const Report& report, OutputFile& file, const AskInterrupted& ask) {
    HtmlPage(report, file, ask).Write();
}

}  // namespace zorvel
