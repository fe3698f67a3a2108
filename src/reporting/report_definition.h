// A report's definition: its query and how the rows are shown. Definitions are TOML files in Reports, which
// docs/reports.md describes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

enum class ColumnAlignment { kLeft, kCentre, kRight };

// How the value of a field is shown.
enum class ValueFormat {
    kText,
    kNumber,  // thousands separators
    kDate,    // "yyyy-mm-dd hh:mm:ss" of the store as "dd/mm/yyyy hh:mm:ss"
    kYesNo,   // "Yes", and "-" for 0 and for nothing
};

// A text with the values of fields in it: the file has "{field}" where a value goes.
struct TextTemplate {
    struct Piece {
        std::string text;
        bool is_field = false;  // `text` is the name of a field
    };
    std::vector<Piece> pieces;
    std::size_t line = 0;  // of the definition file
};

struct ReportPage {
    double width = 595.28;  // points
    double height = 841.89;
    double margin = 34.0;
    double text_size = 8.0;  // of the rows
};

// Rows with the same values of the fields `by` are shown together, below a heading.
struct ReportGroup {
    std::vector<std::string> by;
    TextTemplate heading;
    TextTemplate note;      // below the heading, smaller; may be empty
    bool new_page = false;  // each begins on a page of its own
    std::size_t line = 0;
};

struct ReportColumn {
    std::string field;
    std::string heading;
    double width = 1.0;  // the column's share of the page; only the proportion to the other columns counts
    ColumnAlignment alignment = ColumnAlignment::kLeft;
    ValueFormat format = ValueFormat::kText;
    bool turned = false;         // the heading runs upwards, for narrow columns
    bool blank_repeats = false;  // a value that repeats the row above's, in the same group, is left out
    std::size_t line = 0;
};

// A number about all rows, and about those of each group of the outer levels.
struct ReportTotal {
    enum class Kind { kCount, kSum, kDistinct };

    std::string heading;
    Kind kind = Kind::kCount;
    std::vector<std::string> fields;  // to be added up, or told apart
    std::size_t levels = 0;           // of groups that show it, from the outermost
    std::size_t line = 0;
};

// Bars ahead of the rows: one for each different value of the fields `by`, the longest first.
struct ReportChart {
    std::string heading;
    std::vector<std::string> by;
    TextTemplate label;
    std::string sum;         // the field that is added up; empty: rows are counted
    std::size_t limit = 15;  // of bars; what is beyond it becomes one bar, "Other"
    std::size_t line = 0;
};

struct ReportDefinition {
    std::string path;  // of the file, for errors
    std::string title;
    std::string explanation;  // what the report shows, below the title; may be empty
    std::string query;
    std::size_t query_line = 0;
    ReportPage page;
    std::vector<ReportGroup> groups;  // outermost first
    std::vector<ReportColumn> columns;
    std::vector<ReportTotal> totals;
    std::vector<ReportChart> charts;
};

// Reads a definition. `text` is the file's content (UTF-8), `path` what errors call it. Raises error 13,
// whose description names the file and the line and says what was expected there.
ReportDefinition ParseReportDefinition(std::string_view text, const std::string& path);

// Raises error 13 at a line of a definition.
[[noreturn]] void FailDefinition(const std::string& path, std::size_t line, std::string_view reason);

}  // namespace zorvel
