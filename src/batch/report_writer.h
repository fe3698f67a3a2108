// How a report becomes a PDF file.
#pragma once

#include <filesystem>
#include <functional>

#include "platform/interruption.h"
#include "reporting/report.h"

namespace zorvel {

// Writes a report in the place of a file (a real path), asking time and again whether it was interrupted.
// False when it was: an older file stays. Raises an OutputError.
using ReportWriter =
    std::function<bool(const Report&, const std::filesystem::path&, const AskInterrupted& interrupted)>;

}  // namespace zorvel
