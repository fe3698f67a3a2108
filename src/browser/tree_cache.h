// The cache files of a tree: TempData\<tree>.TreeCache and TempData\<tree>.AppCache.
#pragma once

#include <string>
#include <string_view>

#include "browser/cache_marks.h"
#include "browser/tree_lists.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/new_file.h"
#include "shell/text_records.h"

namespace zorvel {

std::string TreeCachePath(const Files& files, std::string_view tree);
std::string AppCachePath(const Files& files, std::string_view tree);

// Reads a tree cache: its date when it is opened, its containers when they are asked for.
// All operations raise error 6, 9, 13 or 62, or a file error; the detail names file and line.
class TreeCacheReader {
  public:
    explicit TreeCacheReader(InputFile file);

    // The day on which the cache was written.
    const DateTime& date() const { return date_; }
    // Appends the cached containers to the empty `lists` and adds up AppCount.
    void ReadContainers(TreeLists& lists);
    // The digest of the file, once its containers are read.
    std::string Digest() const { return digest_.Text(); }

  private:
    CacheDigest digest_;
    FieldReader reader_;
    DateTime date_;
    std::int32_t announced_ = 0;
};

// Appends the cached applications to `lists`; AppCount becomes their number. Returns the file's digest.
// Raises what TreeCacheReader raises.
std::string ReadAppCache(InputFile file, TreeLists& lists);

// True when each container holds as many applications as its record says.
bool ApplicationsFit(const TreeLists& lists);

// Writes both caches with a date, in the place of older ones.
class TreeCacheWriter {
  public:
    // Both are written beside the older ones first. Raise an OutputError.
    TreeCacheWriter(const Files& files, std::string_view tree, const DateTime& today, const TreeLists& lists);
    void WriteTreeCache();
    void WriteAppCache();
    // Replaces the older caches by the two that were written, and marks them: as those of a reading that was
    // interrupted, or that hold a name which their form cannot carry. Replaces both or none when the disk is
    // full; whenever the program is killed, what is there afterwards is known for what it is. Raises an
    // OutputError.
    void Replace(bool interrupted);
    // The path of the first object whose name the caches cannot carry: a double quote ends it, a line break
    // its record. Empty when they can be read back.
    const std::string& unreadable_object() const { return unreadable_object_; }

  private:
    const Files& files_;
    std::string tree_;
    DateTime today_;
    const TreeLists& lists_;
    NewFile tree_cache_;
    NewFile app_cache_;
    CacheDigests digests_;
    std::string unreadable_object_;
};

}  // namespace zorvel
