// What the store and its files share about the engine: how long it waits, and what its failures become.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/error.h"

namespace SQLite {
class Exception;
}

namespace zorvel::store_detail {

// How long a statement waits for another program to finish with the file.
inline constexpr int kBusyMilliseconds = 200;

// Keeps every other program out of the file, readers included, whatever way of writing it is set to.
inline constexpr const char* kLockOut = "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT";

// The error of a database, which `name` names in its detail.
Error StoreError(const std::string& name, std::string_view reason);
// The store's error for what the engine raised; `system_error` is the system's reason for a failed access.
Error EngineError(const std::string& name, const SQLite::Exception& error, int system_error);

// Makes the empty file `path`, which is an empty database, for its owner alone, whatever the umask. The
// engine gives the files that it keeps beside a database the mode of the database. One that exists stays as
// it is; a failure is the engine's to tell.
void MakeForOwnerAlone(const std::filesystem::path& path);

}  // namespace zorvel::store_detail
