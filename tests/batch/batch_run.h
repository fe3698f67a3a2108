// zorvel-batch, run in a test's folder.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "batch/batch_program.h"
#include "support/temp_folder.h"

namespace zorvel::test {

struct BatchResult {
    int status;
    std::string out;
    std::string err;
};

inline BatchResult RunBatch(const TempFolder& folder, const std::vector<std::string>& arguments,
                            const ReportWriter& write_pdf = {}) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = RunBatchProgram(arguments, folder.path(), false, out, err, write_pdf);
    return {status, out.str(), err.str()};
}

}  // namespace zorvel::test
