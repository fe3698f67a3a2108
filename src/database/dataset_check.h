// Compares the master catalogue with the files of Databases, and mends what does not fit.
#pragma once

#include <string>
#include <vector>

#include "database/catalogue.h"
#include "platform/files.h"

namespace zorvel {

// What can be done about a fault.
enum class DatasetRepair {
    kNone,
    kAddRow,      // enter the dataset in the catalogue, from what it says of itself
    kRemoveRows,  // remove its rows from the catalogue
    kPutBack,     // put the dataset that was set aside in its place again
    kRemoveFile,
};

struct DatasetFault {
    std::string what;     // the kind of fault
    std::string file;     // its name in Databases, or its path in the program folder
    std::string details;  // empty when there is no more to say
    DatasetRepair repair = DatasetRepair::kNone;
};

// All faults, those of datasets first; nothing is changed. Raises what Catalogue::List raises.
std::vector<DatasetFault> FindDatasetFaults(const Files& files, const Catalogue& catalogue);

// What a repair does to its file, as in "remove FILE"; empty for kNone.
std::string RepairText(const DatasetFault& fault);
// Mends a fault. Raises the store's and the files' errors; what could not be mended is as it was.
void RepairDataset(const Files& files, Catalogue& catalogue, const DatasetFault& fault);

}  // namespace zorvel
