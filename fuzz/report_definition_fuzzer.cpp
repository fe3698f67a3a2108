// Reads arbitrary text as a report's definition: it is refused with its line, or its numbers are in range,
// and a report that can be made of it comes on pages.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "fuzz_input.h"
#include "report_dataset.h"
#include "reporting/page_layout.h"
#include "reporting/report.h"

namespace zorvel::fuzz {
namespace {

void CheckRanges(const ReportDefinition& definition) {
    const ReportPage& page = definition.page;
    Require(page.margin >= 0 && 2 * page.margin < page.width && 2 * page.margin < page.height);
    Require(page.text_size >= 4 && page.text_size <= 24);
    Require(!definition.title.empty() && !definition.query.empty() && !definition.columns.empty());
    for (const ReportColumn& column : definition.columns)
        Require(column.width >= 1 && column.width <= 1000 && !column.field.empty());
    for (const ReportGroup& group : definition.groups)
        Require(!group.by.empty() && !group.heading.pieces.empty());
    for (const ReportTotal& total : definition.totals)
        Require(total.levels <= definition.groups.size());
    for (const ReportChart& chart : definition.charts)
        Require(chart.limit <= 1000 && !chart.by.empty());
}

void CheckReport(const Report& report) {
    const ReportRows& rows = report.rows();
    for (std::size_t group = 0; group < rows.groups().size(); ++group) {
        const RowGroup& range = rows.groups()[group];
        Require(range.begin < range.end && range.end <= rows.size());
        Require(rows.GroupOf(range.begin, range.level) == group);
        report.Heading(group);
        report.GroupTotals(group);
    }
    for (std::size_t chart = 0; chart < rows.charts().size(); ++chart)
        Require(rows.charts()[chart].size() <= report.definition().charts[chart].limit + 1);

    static const ReportFonts fonts = test::SquareFonts();
    const PageLayout layout(report, fonts);
    Require(layout.page_count() >= 1);
    for (std::size_t row = 0; row < rows.size(); ++row)
        Require(layout.PageOfRow(row) < layout.page_count());
}

}  // namespace

void TestOneInput(std::string_view input) {
    static const ReportDataset dataset;
    auto definition = Readable({errors::kTypeMismatch},
                               [&] { return ParseReportDefinition(input, std::string(kInputName)); });
    if (!definition) return;
    CheckRanges(*definition);
    try {
        const std::string query = definition->query;
        CheckReport(Report(*std::move(definition), {}, dataset.Open(), query));
    } catch (const Error& error) {
        Require(error.number() == errors::kStore || error.number() == errors::kDiskFull ||
                error.number() == errors::kTypeMismatch);
    } catch (const Interrupted&) {
    }
}

}  // namespace zorvel::fuzz
