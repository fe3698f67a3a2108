#include "platform/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/error.h"
#include "platform/ordinary_file.h"

namespace zorvel {
namespace {

constexpr mode_t kOwner = 0600;
constexpr mode_t kByUmask = 0666;

int Open(const std::filesystem::path& path, OutputFile::Mode mode, OutputFile::Kind kind) {
    const bool own = kind == OutputFile::Kind::kProgramFile;
    const int how = O_WRONLY | O_CREAT | O_CLOEXEC | (mode == OutputFile::Mode::kAppend ? O_APPEND : O_TRUNC);
    // A pipe that nobody reads is not waited for.
    return ::open(path.c_str(), how | (own ? O_NONBLOCK : 0), own ? kOwner : kByUmask);
}

}  // namespace

OutputFile::OutputFile(const std::filesystem::path& path, std::string name, Mode mode, Kind kind)
    : name_(std::move(name)), descriptor_(Open(path, mode, kind)) {
    // Creating a file fails with "not found" only when its folder is missing.
    if (descriptor_ < 0 && errno == ENOENT) throw OutputError(Error(errors::kPathNotFound).At(name_));
    if (descriptor_ < 0) throw OutputError(FileError(errno, name_));
    if (kind == Kind::kUserFile || IsOrdinaryFile(descriptor_)) return;
    ::close(descriptor_);
    throw OutputError(NoOrdinaryFile(name_));
}

OutputFile::OutputFile(std::function<void(std::string_view)> take, std::string name)
    : name_(std::move(name)), take_(std::move(take)) {}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : name_(std::move(other.name_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      take_(std::exchange(other.take_, {})),
      buffer_(std::exchange(other.buffer_, {})),
      used_(std::exchange(other.used_, 0)) {}

OutputFile& OutputFile::operator=(OutputFile&& other) noexcept {
    std::swap(name_, other.name_);
    std::swap(descriptor_, other.descriptor_);
    std::swap(take_, other.take_);
    std::swap(buffer_, other.buffer_);
    std::swap(used_, other.used_);
    return *this;
}

OutputFile::~OutputFile() {
    try {
        Close();
    } catch (const Error&) {
        // Nobody is left to be told.
    }
}

void OutputFile::MakeRoom(std::size_t size) {
    Flush();
    if (size > buffer_.size()) buffer_.resize(std::max(size, kBufferSize));
}

void OutputFile::Flush() {
    std::string_view rest(buffer_.data(), used_);
    if (take_) {
        used_ = 0;
        if (!rest.empty()) take_(rest);
        return;
    }
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            const int error_code = errno;
            std::copy(rest.begin(), rest.end(), buffer_.data());
            used_ = rest.size();
            throw OutputError(FileError(error_code, name_));
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    used_ = 0;
}

void OutputFile::Sync() {
    Flush();
    if (take_) return;
    if (::fdatasync(descriptor_) != 0) throw OutputError(FileError(errno, name_));
}

void OutputFile::Close() {
    if (take_) Flush();
    if (descriptor_ < 0) return;
    struct Release {
        OutputFile& file;
        ~Release() {
            if (file.descriptor_ >= 0) ::close(std::exchange(file.descriptor_, -1));
            file.used_ = 0;
        }
    } const release{*this};
    Flush();
    if (::close(std::exchange(descriptor_, -1)) != 0) throw OutputError(FileError(errno, name_));
}

}  // namespace zorvel
