// Saved selections of applications.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "directory/tree_lists.h"
#include "platform/input_file.h"

namespace zorvel {

struct SavedSelection {
    std::string saved;       // the date of saving, as it stands in the file
    std::int32_t count = 0;  // how many applications were saved
    std::string comment;
    std::vector<std::pair<std::string, std::string>> applications;  // name and container
};

// Reads a selection file: as many applications as it says it holds.
// Raises error 6 or 62 when it holds fewer, the detail naming file and line.
SavedSelection ReadSelection(InputFile file);

// Replaces the selection of `lists` by a saved one. Applications that are no longer there are passed over;
// returns how many were selected.
std::int32_t SelectSaved(TreeLists& lists, const SavedSelection& selection);

// "Application selections loaded - 2 of 3 previously saved selections successfully made."
std::string SelectionLoadedText(std::int32_t selected, const SavedSelection& selection);

}  // namespace zorvel
