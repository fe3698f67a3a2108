// What the tree's cache files and the saved selections have in common: a heading, a line with date and count,
// one record a line.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "directory/tree_lists.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace zorvel {

// Writes such a file, replacing an older one: `heading`, the date of `today` with `count`, and what
// `write_records` writes. Raises an OutputError, and then leaves no file: half of one would pass for a whole.
void WriteCacheFile(const Files& files, const std::string& path, std::string_view heading,
                    const DateTime& today, std::size_t count,
                    const std::function<void(OutputFile&)>& write_records);

// Writes the record of one application: its name and its container, each quoted as it stands.
void WriteApplication(OutputFile& file, const AppRecord& application);

}  // namespace zorvel
