#include "platform/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/new_file.h"

namespace zorvel {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view kForbidden("/\0", 2);

// The entry of `folder` that `name` (UTF-8) names on a case-insensitive file system, or `name` itself.
fs::path FindSpelling(const fs::path& folder, const std::string& name) {
    fs::path exact = folder / name;
    struct stat status {};
    if (::lstat(exact.c_str(), &status) == 0) return exact;
    const std::string wanted = UpperCase(FromUtf8(name));
    std::error_code error;
    fs::path best;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        const fs::path found = it->path();
        const bool same = UpperCase(FromUtf8(found.filename().native())) == wanted;
        // Two spellings of one name can lie in a folder here: the first in byte order is taken, whatever the
        // disk's order.
        if (same && (best.empty() || found < best)) best = found;
    }
    return best.empty() ? exact : best;
}

[[noreturn]] void ThrowFileError(const std::error_code& error, std::string_view path) {
    throw FileError(error.value(), std::string(path));
}

}  // namespace

Files::Files(const fs::path& program_folder)
    : folder_(fs::canonical(program_folder)), program_folder_(FromUtf8(folder_.native())) {}

std::string Files::Path(std::string_view relative) const {
    std::string path = program_folder_;
    path += '\\';
    path += relative;
    return path;
}

fs::path Files::Resolve(std::string_view path) const {
    const bool ours = path.starts_with(program_folder_) && path.size() > program_folder_.size() &&
                      path[program_folder_.size()] == '\\';
    fs::path real = ours ? folder_ : fs::path("/");
    std::string_view rest = path.substr(ours ? program_folder_.size() : 0);
    const std::string_view separators = ours ? "\\" : "\\/";
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find_first_of(separators), rest.size());
        const std::string_view name = rest.substr(0, length);
        rest.remove_prefix(std::min(length + 1, rest.size()));
        if (name.empty() || name == ".") continue;
        if (name.find_first_of(kForbidden) != std::string_view::npos || (ours && name == "..")) {
            throw Error(errors::kPathNotFound).At(std::string(path));
        }
        real = FindSpelling(real, ToUtf8(name));
    }
    return real;
}

bool Files::Exists(std::string_view path) const {
    std::error_code error;
    return fs::is_regular_file(Resolve(path), error);
}

InputFile Files::Open(std::string_view path) const {
    const fs::path real = Resolve(path);
    std::error_code error;
    if (fs::status(real.parent_path(), error).type() == fs::file_type::not_found) {
        throw Error(errors::kPathNotFound).At(std::string(path));
    }
    return InputFile(real, std::string(path));
}

std::string Files::Read(std::string_view path) const {
    return Open(path).Rest();
}

OutputFile Files::Create(std::string_view path) const {
    return OutputFile(Resolve(path), std::string(path), OutputFile::Mode::kTruncate,
                      OutputFile::Kind::kProgramFile);
}

OutputFile Files::Append(std::string_view path) const {
    return OutputFile(Resolve(path), std::string(path), OutputFile::Mode::kAppend,
                      OutputFile::Kind::kProgramFile);
}

void Files::WriteInPlace(std::string_view path, const std::function<void(OutputFile&)>& write) const {
    NewFile made(Resolve(path), std::string(path), OutputFile::Kind::kProgramFile);
    write(made.file());
    made.file().Sync();
    made.file().Close();
    made.MoveIntoPlace();
}

void Files::Remove(std::string_view path) const {
    if (::unlink(Resolve(path).c_str()) != 0) throw FileError(errno, std::string(path));
}

void Files::Copy(std::string_view from, std::string_view to) const {
    InputFile source = Open(from);
    OutputFile target = Create(to);
    for (std::string_view bytes = source.Available(); !bytes.empty(); bytes = source.Available()) {
        target.Write(bytes);
        source.Skip(bytes.size());
    }
    target.Close();
}

void Files::Rename(std::string_view from, std::string_view to) const {
    if (Exists(to)) throw Error(errors::kFileExists).At(std::string(to));
    Replace(from, to);
}

void Files::Replace(std::string_view from, std::string_view to) const {
    std::error_code error;
    fs::rename(Resolve(from), Resolve(to), error);
    if (error) ThrowFileError(error, from);
}

std::uint64_t Files::Size(std::string_view path) const {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(Resolve(path), error);
    if (error) ThrowFileError(error, path);
    return size;
}

DateTime Files::Modified(std::string_view path) const {
    struct stat status {};
    if (::stat(Resolve(path).c_str(), &status) != 0) throw FileError(errno, std::string(path));
    return LocalTime(status.st_mtime);
}

std::vector<std::string> Files::List(std::string_view folder, std::string_view prefix,
                                     std::string_view suffix) const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(Resolve(folder), error), end; !error && it != end; it.increment(error)) {
        std::string name = FromUtf8(it->path().filename().native());
        const bool fits =
            name.size() >= prefix.size() + suffix.size() && BeginsIgnoringCase(name, prefix) &&
            EqualIgnoringCase(std::string_view(name).substr(name.size() - suffix.size()), suffix);
        if (fits && it->is_regular_file(error)) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace zorvel
