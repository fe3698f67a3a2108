// What the files for other programs call the fields of a report.
#pragma once

#include <string>
#include <vector>

#include "reporting/report.h"

namespace zorvel {

// For each field of the query the first column that shows it, or null.
std::vector<const ReportColumn*> ColumnsOfFields(const Report& report);

// The names of the fields, each different from all others without regard to case: where the query gives a
// name again, "_2" and so on is added.
std::vector<std::string> FieldKeys(const Report& report);

// What stands above each field in a spreadsheet: the heading of the column that shows it. A field that no
// column shows, and one whose heading is not its own alone, has its key instead.
std::vector<std::string> FieldHeadings(const Report& report);

// The same names, "_2" and so on added to those that came before, without regard to case.
std::vector<std::string> MadeUnique(std::vector<std::string> names);

}  // namespace zorvel
