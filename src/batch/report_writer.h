// How a report becomes a file of one format.
#pragma once

#include <filesystem>
#include <functional>

#include "reporting/report.h"

namespace zorvel {

// Writes a report in the place of a file (a real path). Raises an OutputError.
using ReportWriter = std::function<void(const Report&, const std::filesystem::path&)>;

}  // namespace zorvel
