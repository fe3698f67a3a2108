#include "platform/new_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>
#include <utility>

#include "platform/error.h"
#include "platform/ordinary_file.h"

namespace zorvel {
namespace fs = std::filesystem;
namespace {

// The file that a link leads to, whether it is there or not: it is replaced, and the link stays.
fs::path WithoutLinks(fs::path path, const std::string& name) {
    constexpr int kMostLinks = 40;  // as the kernel follows them
    std::error_code failure;
    for (int links = 0; fs::is_symlink(path, failure); ++links) {
        if (links == kMostLinks) throw OutputError(FileError(ELOOP, name));
        // A link that begins at the root takes the whole path's place.
        path = path.parent_path() / fs::read_symlink(path, failure);
    }
    return path;
}

// A name in the folder of `path` that nobody uses, and nobody can guess. It does not depend on the name of
// the file, which may be as long as names can be.
fs::path SecretNameBeside(const fs::path& path) {
    constexpr int kParts = 4;
    std::random_device random;
    std::string name = ".zorvel";
    for (int i = 0; i < kParts; ++i)
        name += '-' + std::to_string(random());
    return path.parent_path() / (name + ".tmp");
}

fs::path NameBeside(fs::path path, OutputFile::Kind kind) {
    if (kind == OutputFile::Kind::kUserFile) return SecretNameBeside(path);
    return path += kNewFileEnd;
}

// The permissions of the file that is to be replaced; none when there is no such file.
std::optional<fs::perms> OlderPermissions(const fs::path& target, const std::string& name) {
    std::error_code ignored;
    const fs::file_status older = fs::status(target, ignored);
    if (!fs::exists(older)) return std::nullopt;
    if (!fs::is_regular_file(older)) throw OutputError(NoOrdinaryFile(name));
    if (::access(target.c_str(), W_OK) != 0) throw OutputError(FileError(errno, name));
    return older.permissions();
}

}  // namespace

NewFile::NewFile(const fs::path& target, std::string name, OutputFile::Kind kind)
    : target_(WithoutLinks(target, name)),
      beside_(NameBeside(target_, kind)),
      name_(std::move(name)),
      older_permissions_(OlderPermissions(target_, name_)) {
    // Who may not read the older file shall not read the new one either, also while it is written.
    const OutputFile::Kind made = older_permissions_ ? OutputFile::Kind::kProgramFile : kind;
    file_.emplace(beside_, name_, OutputFile::Mode::kTruncate, made);
}

NewFile::~NewFile() {
    if (!moved_) ::unlink(beside_.c_str());
}

void NewFile::MoveIntoPlace() {
    std::error_code ignored;
    if (older_permissions_) fs::permissions(beside_, *older_permissions_, ignored);
    if (std::rename(beside_.c_str(), target_.c_str()) != 0) throw OutputError(FileError(errno, name_));
    moved_ = true;
}

}  // namespace zorvel
