// Writes the temporary data files of a run that never took place, of any size, for measuring the import.
#pragma once

#include <cstdint>

#include "platform/files.h"

namespace zorvel::tools {

struct ImportSize {
    std::int64_t rows = 1000;         // rows of the dataset beyond the applications and their attributes
    std::int64_t applications = 100;  // spread over containers, 50 in each
};

// Writes all files below TempData that the import reads, the capture record included. The same size gives the
// same bytes.
void WriteImportData(const Files& files, ImportSize size);

}  // namespace zorvel::tools
