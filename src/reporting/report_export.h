// A report as a file for other programs, all in UTF-8: a page for the browser, rows for a spreadsheet or a
// script.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "platform/output_file.h"
#include "reporting/report.h"

namespace zorvel {

// One self-contained page: nothing is loaded from elsewhere. Groups fold, a box filters the rows.
void WriteHtml(const Report& report, OutputFile& file);

// The columns' headings, then one record a row (RFC 4180, with a byte order mark, by which spreadsheets know
// UTF-8). Values are as the dataset holds them, except that an apostrophe stands before a text that a
// spreadsheet would take for a formula.
void WriteCsv(const Report& report, OutputFile& file);

// An object with the report's facts, its totals, and "rows", an array of objects keyed by field name. Numbers
// are numbers.
void WriteJson(const Report& report, OutputFile& file);

// Writes a file in the place of `path` (a real path): beside it first, so that an older file of that name
// stays when writing fails. Raises an OutputError that names the file.
void WriteInPlace(const std::filesystem::path& path, const std::function<void(OutputFile&)>& write);

}  // namespace zorvel
