// The cache files of a tree: TempData\<tree>.TreeCache and TempData\<tree>.AppCache.
#pragma once

#include <string>
#include <string_view>

#include "directory/tree_lists.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "shell/text_records.h"

namespace zorvel {

std::string TreeCachePath(const Files& files, std::string_view tree);
std::string AppCachePath(const Files& files, std::string_view tree);

// Reads a tree cache: its date when it is opened, its containers when they are asked for.
// All operations raise error 6, 9, 13 or 62, or a file error; the detail names file and line.
class TreeCacheReader {
  public:
    TreeCacheReader(const Files& files, std::string_view tree);

    // The day on which the cache was written.
    const DateTime& date() const { return date_; }
    // Appends the cached containers to the empty `lists` and adds up AppCount.
    void ReadContainers(TreeLists& lists);

  private:
    FieldReader reader_;
    DateTime date_;
    std::int32_t announced_ = 0;
};

// Appends the cached applications to `lists`; AppCount becomes their number. Raises what TreeCacheReader
// raises.
void ReadAppCache(const Files& files, std::string_view tree, TreeLists& lists);

// Write the caches with today's date. A file that cannot be written whole is removed. Raise an OutputError.
void WriteTreeCache(const Files& files, std::string_view tree, const DateTime& today, const TreeLists& lists);
void WriteAppCache(const Files& files, std::string_view tree, const DateTime& today, const TreeLists& lists);

}  // namespace zorvel
