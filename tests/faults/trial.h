// One operation on one folder under one fault, and what must hold behind it.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "faults/operations.h"

namespace zorvel::test {

// What an operation comes to without a fault: the measure of its trials.
struct Reference {
    Reference(const Operation& operation, const std::filesystem::path& parent, const std::string& name);

    Operation operation;
    AuditFolder folder;  // as the operation finds it
    FolderState before;
    FolderState after;
    FolderState final;                // after the next run, which is imported
    std::set<std::string> digests;    // of all datasets that are whole
    std::set<std::string> next_runs;  // likewise, of the next run over the old and the new folder
    std::set<std::string> names;      // of all files that there are in the end, but for datasets
    bool has_run = false;             // there is a run that can be imported, before as well as after
    long calls = 0;                   // by which it changes files
};

// Runs the operation with a fault ("kill 7") in the folder `name`, and then looks at what is left, imports,
// analyses and repairs. Returns what was wrong, a sentence each; `hit` becomes the call that the fault met,
// and is empty when it met none.
std::vector<std::string> TryFault(const Reference& reference, const std::string& fault,
                                  const std::filesystem::path& parent, const std::string& name,
                                  std::string& hit);

// Looks at what programs left in a folder, imports, analyses and repairs. Adds what was wrong to `faults`.
void CheckFolder(const Reference& reference, const AuditFolder& folder, std::vector<std::string>& faults);

}  // namespace zorvel::test
