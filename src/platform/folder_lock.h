// One process at a time does something to a folder, and those who find it taken can say who.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_lock.h"

namespace zorvel {

// The process that holds a lock.
struct LockHolder {
    std::string command;  // what it does, in its own words
    std::string process;  // its number
    std::string host;

    // "'zorvel-batch import' (process 4711 on audit1)"; "another program" when it has not said yet.
    std::string Text() const;
};

class FolderLock {
  public:
    // `path` is the lock's file, which is made at the first attempt to take it and stays; `name` is what
    // errors call it.
    FolderLock(std::filesystem::path path, std::string name);

    // Takes the lock and says that `command` holds it; false when another process has it. A full disk does
    // not prevent it, but then nobody can say who holds it. Raises error 70, 75 or 76 when the file cannot be
    // opened.
    bool TryAcquire(std::string_view command);
    void Release();
    // Who holds the lock, after TryAcquire gave false; empty while a process that has just taken it has not
    // said so.
    LockHolder Holder() const;

  private:
    std::filesystem::path path_;
    std::string name_;
    std::optional<FileLock> lock_;
};

}  // namespace zorvel
