// What is known of a tree's two cache files beside what stands in them, in TempData\<tree>.CacheMark: their
// own form has no room for it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace zorvel {

// The digest of a cache file: of its records, not of the two lines before them, so that another date makes
// no other file of it.
class CacheDigest {
  public:
    CacheDigest();
    ~CacheDigest();
    CacheDigest(const CacheDigest&) = delete;
    CacheDigest& operator=(const CacheDigest&) = delete;
    CacheDigest(CacheDigest&&) = delete;
    CacheDigest& operator=(CacheDigest&&) = delete;

    // Takes the next bytes of the file.
    void Add(std::string_view bytes);
    // The digest of all bytes so far: 16 hexadecimal digits.
    std::string Text() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
    int head_lines_;  // that are still to be passed over
};

// The digests of the two cache files of a tree.
struct CacheDigests {
    std::string tree;
    std::string applications;

    bool operator==(const CacheDigests&) const = default;
};

enum class CacheState {
    kWhole,
    kInterrupted,  // they hold what was read until the reading was interrupted
    kUnreadable,   // they hold a name that their form cannot carry
    kMixed,        // the two were not written together
    kUnknown,      // not written by a program that marks them
};

// Two cache files that were written together.
struct CacheMark {
    CacheDigests digests;
    CacheState state = CacheState::kWhole;
    std::string object{};  // the path of the object whose name cannot be carried

    bool operator==(const CacheMark&) const = default;
};

// The marks of a file, in its order. What is damaged in it is passed over. Raises error 75 on a read error.
std::vector<CacheMark> ReadCacheMarks(InputFile file);
// The line that holds a mark in its file.
std::string CacheMarkLine(const CacheMark& mark);

class CacheMarks {
  public:
    // Reads the marks of a tree; none when there is no file. What is damaged in it is passed over.
    CacheMarks(const Files& files, std::string_view tree);

    // The state of the two files with these digests.
    CacheState StateOf(const CacheDigests& digests) const;
    // The object that makes the files which are there now unreadable; empty when they can be read.
    std::string UnreadableObject() const;

    // Marks the files that are about to be put into place. Those that are there now keep their mark until
    // Settle: whenever the program is killed, each pair is known for what it is. Both raise an OutputError.
    void Announce(const CacheMark& next);
    // The files that were announced last are in place.
    void Settle();

  private:
    void Write() const;

    const Files& files_;
    std::string tree_;
    std::vector<CacheMark> marks_;  // in the order in which they were announced
};

}  // namespace zorvel
