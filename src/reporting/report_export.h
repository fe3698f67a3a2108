// A report as a file for other programs, all in UTF-8: a page for the browser, rows for a spreadsheet or a
// script.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "platform/interruption.h"
#include "platform/output_file.h"
#include "reporting/report.h"

namespace zorvel {

// Text comes out of every format whole, and without a meaning in it. The writers raise the file's errors, and
// Interrupted when `ask` says so.

// One self-contained page: nothing is loaded from elsewhere, and no script runs but its own. Groups fold, a
// box filters the rows; without scripts groups still fold. Values are shown as in the report's window. On
// paper the page is the definition's.
void WriteHtml(const Report& report, OutputFile& file, const AskInterrupted& ask = {});

// A heading for every field of the query (that of the column which shows it, or else its name), then one
// record a row (RFC 4180, with a byte order mark, by which spreadsheets know UTF-8). Values are as the
// dataset holds them, except that an apostrophe stands before a text that a spreadsheet would take for a
// formula, and that control characters other than tabs and ends of lines become their pictures ("\u241B" for
// 27) or U+FFFD.
void WriteCsv(const Report& report, OutputFile& file, const AskInterrupted& ask = {});

// An object with "title", "facts", "totals" (numbers by their headings) and "rows", an array of objects keyed
// by field name, one a line. Values are as the dataset holds them, character by character: texts, but plain
// whole numbers of number columns are numbers (unless doubles cannot hold them), and those of yes-no columns
// true or false.
void WriteJson(const Report& report, OutputFile& file, const AskInterrupted& ask = {});

// What a report can be saved as.
struct ReportFormat {
    std::string_view suffix;  // of the file's name, with its dot
    std::string_view filter;  // as file dialogs name the format
    // Null for PDF, which is drawn as paper is.
    void (*write)(const Report&, OutputFile&, const AskInterrupted&);
};

// All formats; PDF is the first.
std::span<const ReportFormat> ReportFormats();
// The format that a file's name asks for by its suffix, in any case; null when it names none.
const ReportFormat* FormatOf(const std::filesystem::path& path);

}  // namespace zorvel
