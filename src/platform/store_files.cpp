#include "platform/store_files.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <string>

#include "platform/store_engine.h"

namespace zorvel {
namespace {

using store_detail::EngineError;
using store_detail::kBusyMilliseconds;
using store_detail::kLockOut;
using store_detail::MakeForOwnerAlone;

// The files that the engine keeps beside a database while it writes, and leaves there when it is killed.
void RemoveRecoveryFiles(const Files& files, std::string_view path) {
    for (const char* suffix : {"-journal", "-wal", "-shm"}) {
        const std::string beside = std::string(path) + suffix;
        if (files.Exists(beside)) files.Remove(beside);
    }
}

}  // namespace

void CopyDatabase(const Files& files, std::string_view from, std::string_view to) {
    const std::string partial = std::string(to) + ".partial";
    try {
        if (files.Exists(partial)) files.Remove(partial);
        MakeForOwnerAlone(files.Resolve(partial));
        files.Copy(from, partial);
        RemoveRecoveryFiles(files, to);
        files.Rename(partial, to);
    } catch (...) {
        if (files.Exists(partial)) files.Remove(partial);
        throw;
    }
}

void RequireUnused(const Files& files, std::string_view path) {
    try {
        SQLite::Database db(files.Resolve(path).string(), SQLite::OPEN_READWRITE, kBusyMilliseconds);
        db.exec(kLockOut);
    } catch (const SQLite::Exception& error) {
        const int code = error.getErrorCode();
        // A file that is no database is nobody's.
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) throw EngineError(std::string(path), error, 0);
    }
}

void ReplaceDatabase(const Files& files, std::string_view from, std::string_view to) {
    RemoveRecoveryFiles(files, to);
    files.Replace(from, to);
}

void RemoveDatabase(const Files& files, std::string_view path) {
    if (files.Exists(path)) RequireUnused(files, path);
    files.Remove(path);
    RemoveRecoveryFiles(files, path);
}

void RemoveUnfinished(const Files& files, std::string_view path) {
    if (files.Exists(path)) files.Remove(path);
    RemoveRecoveryFiles(files, path);
}

}  // namespace zorvel
