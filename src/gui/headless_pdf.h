// A report as PDF, for programs without windows and machines without a display.
#pragma once

#include <filesystem>

#include "reporting/report.h"

namespace zorvel {

// Writes the file in the place of `path` (a real path), as WritePdf does; sets Qt up first where nobody has.
void WritePdfWithoutDisplay(const Report& report, const std::filesystem::path& path);

}  // namespace zorvel
