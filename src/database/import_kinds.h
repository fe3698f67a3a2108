// What the import loads, in order: the kinds of temporary data, their files, texts and statements.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/data_files.h"
#include "database/row_insert.h"

namespace zorvel {

struct ImportKind {
    std::string_view section;  // label of the status display
    std::string_view opening;  // activity at the start of a file
    std::string_view timing;   // of the log line at its end
    std::span<const DataFile> files;
    std::size_t progress_field;  // of a record, the field shown as the activity
    bool shows_count = true;
    bool moves_bar = true;
    std::string_view insert =
        {};  // up to "VALUES ("; empty for the attributes, which have a loader of their own
    std::span<const ValueRule> values = {};
    // True for a record that is left out when its application has no row; any other then ends the import.
    bool (*needs_no_application)(const std::vector<std::string>& record) = nullptr;
};

// The kinds in the order in which they are loaded: the applications come first, all others refer to them.
std::span<const ImportKind> ImportKinds();

}  // namespace zorvel
