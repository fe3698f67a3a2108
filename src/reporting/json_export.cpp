// A report as a JSON text (RFC 8259), one row a line.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reporting/export_fields.h"
#include "reporting/report_export.h"
#include "reporting/report_values.h"
#include "shell/json_writer.h"

namespace zorvel {
namespace {

// Larger numbers lose digits in programs that read numbers as doubles.
constexpr std::int64_t kLargestSafe = (std::int64_t{1} << 53) - 1;

// A value of the dataset. What is no plain whole number stays a text: "007" must not lose its zeros.
void WriteValue(JsonWriter& writer, std::string_view value, ValueFormat format) {
    const bool number = format == ValueFormat::kNumber || format == ValueFormat::kYesNo;
    const std::optional<std::int64_t> whole = number ? WholeNumber(value) : std::nullopt;
    if (!whole || *whole > kLargestSafe || *whole < -kLargestSafe || std::to_string(*whole) != value) {
        writer.Write(value);
    } else if (format == ValueFormat::kYesNo) {
        writer.WriteBare(*whole == 0 ? "false" : "true");
    } else {
        writer.WriteBare(value);
    }
}

void WriteFacts(const ReportFacts& facts, JsonWriter& writer, OutputFile& file) {
    const std::pair<std::string_view, const std::string&> lines[] = {
        {"caption", facts.caption},     {"dataset", facts.dataset},   {"tree", facts.tree},
        {"container", facts.container}, {"captured", facts.captured}, {"comment", facts.comment},
        {"order", facts.order},         {"excluded", facts.excluded}, {"generated", facts.generated},
    };
    std::string_view separator = "\n";
    for (const auto& [name, value] : lines) {
        file.Write(separator);
        writer.WriteKey(name);
        writer.Write(value);
        separator = ",\n";
    }
    const auto write_if = [&](std::string_view name, const std::string& value) {
        if (value.empty()) return;
        file.Write(separator);
        writer.WriteKey(name);
        writer.Write(value);
    };
    write_if("findings", facts.findings);
    write_if("import", facts.ImportNote());
}

void WriteTotals(const Report& report, JsonWriter& writer, OutputFile& file) {
    std::vector<std::string> headings;
    for (const ReportTotal& total : report.definition().totals)
        headings.push_back(total.heading);
    headings = MadeUnique(std::move(headings));
    for (std::size_t total = 0; total < headings.size(); ++total) {
        file.Write(total == 0 ? "\n" : ",\n");
        writer.WriteKey(headings[total]);
        file.Write(std::to_string(report.rows().Total(total)));
    }
}

void WriteRows(const Report& report, JsonWriter& writer, OutputFile& file, const AskInterrupted& ask) {
    const ReportRows& rows = report.rows();
    const std::vector<std::string> keys = FieldKeys(report);
    const std::vector<const ReportColumn*> columns = ColumnsOfFields(report);
    InterruptionPoint point(ask);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        point.Pass();
        file.Write(row == 0 ? "\n{" : ",\n{");
        for (std::size_t field = 0; field < keys.size(); ++field) {
            if (field > 0) file.Write(", ");
            writer.WriteKey(keys[field]);
            WriteValue(writer, rows.Value(row, field),
                       columns[field] == nullptr ? ValueFormat::kText : columns[field]->format);
        }
        file.Write('}');
    }
}

}  // namespace

void WriteJson(const Report& report, OutputFile& file, const AskInterrupted& ask) {
    JsonWriter writer(file);
    file.Write("{\n");
    writer.WriteKey("title");
    writer.Write(report.definition().title);
    file.Write(",\n\"facts\": {");
    WriteFacts(report.facts(), writer, file);
    file.Write("\n},\n\"totals\": {");
    WriteTotals(report, writer, file);
    file.Write("\n},\n\"rows\": [");
    WriteRows(report, writer, file, ask);
    file.Write("\n]\n}\n");
}

}  // namespace zorvel
