// Writing a file so that the one it replaces is whole until the new one is.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>

#include "platform/code_page.h"
#include "platform/error.h"
#include "reporting/report_export.h"

namespace zorvel {
namespace {

namespace fs = std::filesystem;

// A name in the folder of `path` that nobody uses, and nobody can guess. It does not depend on the name of
// the file, which may be as long as names can be.
fs::path NameBeside(const fs::path& path) {
    constexpr int kParts = 4;
    std::random_device random;
    std::string name = ".zorvel";
    for (int i = 0; i < kParts; ++i)
        name += '-' + std::to_string(random());
    return path.parent_path() / (name + ".tmp");
}

// A file that is removed again unless it was moved to its place.
class TemporaryFile {
  public:
    explicit TemporaryFile(const fs::path& target) : path_(NameBeside(target)) {}
    ~TemporaryFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;

    const fs::path& path() const { return path_; }

    // Makes it readable to its owner alone.
    void MakePrivate(const std::string& name) const {
        constexpr mode_t kOwner = 0600;
        const int made = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwner);
        if (made < 0) throw OutputError(FileError(errno, name));
        ::close(made);
    }
    void MoveTo(const fs::path& target, const std::string& name) const {
        if (std::rename(path_.c_str(), target.c_str()) != 0) throw OutputError(FileError(errno, name));
    }

  private:
    fs::path path_;
};

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

}  // namespace

void WriteInPlace(const fs::path& path, const std::function<void(OutputFile&)>& write) {
    const std::string name = FromUtf8(path.string());
    std::error_code ignored;
    const fs::file_status older = fs::status(path, ignored);
    const bool replaces = fs::is_regular_file(older);
    // Pipes and devices are written to, never replaced; a folder refuses.
    if (fs::exists(older) && !replaces) {
        OutputFile file(path, name, OutputFile::Mode::kTruncate);
        write(file);
        return file.Close();
    }
    const fs::path target = WithoutLinks(path, name);
    if (replaces && ::access(target.c_str(), W_OK) != 0) throw OutputError(FileError(errno, name));

    const TemporaryFile temporary(target);
    // Who may not read the older file shall not read the new one either, also while it is written.
    if (replaces) temporary.MakePrivate(name);
    OutputFile file(temporary.path(), name, OutputFile::Mode::kTruncate);
    write(file);
    file.Close();
    if (replaces) fs::permissions(temporary.path(), older.permissions(), ignored);
    temporary.MoveTo(target, name);
}

}  // namespace zorvel
