#include "platform/store_engine.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/code_page.h"

namespace zorvel::store_detail {
namespace {

// The part of an engine's error code that is the same for all its variants.
constexpr int kPrimaryCode = 0xFF;

// True for what a full disk raises: the engine knows it as such only where it lacks space, not where a quota
// or a limit of the file's size keeps it from growing.
bool IsFullDisk(int code, int system_error) {
    const bool lacks_room = system_error == ENOSPC || system_error == EDQUOT || system_error == EFBIG;
    return code == SQLITE_FULL || ((code == SQLITE_IOERR || code == SQLITE_CANTOPEN) && lacks_room);
}

}  // namespace

Error StoreError(const std::string& name, std::string_view reason) {
    const std::string text = CutForMessage(reason);
    return Error(errors::kStore, text).With(name + ": " + text);
}

Error EngineError(const std::string& name, const SQLite::Exception& error, int system_error) {
    const std::string reason = FromUtf8(error.what());
    if (IsFullDisk(error.getErrorCode() & kPrimaryCode, system_error))
        return Error(errors::kDiskFull).With(name + ": " + reason);
    return StoreError(name, reason);
}

void MakeForOwnerAlone(const std::filesystem::path& path) {
    constexpr mode_t kOwnerAlone = S_IRUSR | S_IWUSR;
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerAlone);
    if (file < 0) return;
    ::fchmod(file, kOwnerAlone);
    ::close(file);
}

}  // namespace zorvel::store_detail
