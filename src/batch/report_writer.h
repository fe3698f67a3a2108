// How a report becomes a PDF file.
#pragma once

#include <filesystem>
#include <functional>

#include "reporting/report.h"

namespace zorvel {

// Writes a report in the place of a file (a real path), asking time and again whether it was interrupted.
// False when it was: an older file stays. Raises an OutputError.
using ReportWriter = std::function<bool(const Report&, const std::filesystem::path&,
                                        const std::function<bool()>& interrupted)>;

}  // namespace zorvel
