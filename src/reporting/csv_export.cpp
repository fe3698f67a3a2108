// A report as comma-separated values.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "database/import_record.h"
#include "reporting/export_fields.h"
#include "reporting/report_export.h"
#include "shell/csv_writer.h"

namespace zorvel {

void WriteCsv(const Report& report, OutputFile& file, const AskInterrupted& ask) {
    const ReportRows& rows = report.rows();
    const std::size_t fields = rows.fields().size();
    // A column of its own says of the rows that their import was not completed.
    const bool marked = !report.facts().incomplete.empty();
    CsvWriter writer(file);
    const auto write_record = [&](const auto& value, std::string_view mark) {
        for (std::size_t field = 0; field < fields; ++field)
            writer.Write(value(field));
        if (marked) writer.Write(mark);
        writer.EndRecord();
    };
    const std::vector<std::string> headings = FieldHeadings(report);
    write_record([&](std::size_t field) { return std::string_view(headings[field]); }, kImportNotCompleted);
    InterruptionPoint point(ask);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        point.Pass();
        write_record([&](std::size_t field) { return rows.Value(row, field); },
                     marked && report.IsOfIncomplete(row) ? "yes" : "");
    }
}

}  // namespace zorvel
