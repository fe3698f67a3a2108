// The command line of zorvel-batch.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "batch/batch_session.h"
#include "batch/report_writer.h"

namespace zorvel {

// Runs the program with `arguments` (without the program's own name). `folder` is the program folder unless
// --folder names another one; `show_progress` is set when standard error is a terminal; `write_pdf` makes the
// PDF of a report. Returns the exit status.
int RunBatchProgram(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                    bool show_progress, std::ostream& out, std::ostream& err, const ReportWriter& write_pdf);

}  // namespace zorvel
