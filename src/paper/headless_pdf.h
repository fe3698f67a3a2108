// A report as PDF, for programs without windows and machines without a display.
#pragma once

#include <filesystem>

#include "platform/interruption.h"
#include "reporting/report.h"

namespace zorvel {

// Writes the file in the place of `path` (a real path), as WritePdf does; sets Qt up first where nobody has.
// Asks for each page whether it was interrupted; false when it was: an older file stays.
bool WritePdfWithoutDisplay(const Report& report, const std::filesystem::path& path,
                            const AskInterrupted& interrupted);

}  // namespace zorvel
