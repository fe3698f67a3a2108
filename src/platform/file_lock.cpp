#include "platform/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/error.h"
#include "platform/ordinary_file.h"

namespace zorvel {
namespace {

int Open(const std::filesystem::path& path) {
    constexpr int kHow = O_CLOEXEC | O_NONBLOCK;
    constexpr mode_t kOwner = 0600;
    const int writable = ::open(path.c_str(), O_RDWR | O_CREAT | kHow, kOwner);
    return writable >= 0 ? writable : ::open(path.c_str(), O_RDONLY | kHow);
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& path, std::string name)
    : name_(std::move(name)), descriptor_(Open(path)) {
    if (descriptor_ < 0) throw FileError(errno, name_);
    if (IsOrdinaryFile(descriptor_)) return;
    ::close(descriptor_);
    throw NoOrdinaryFile(name_);
}

FileLock::FileLock(FileLock&& other) noexcept
    : name_(std::move(other.name_)), descriptor_(std::exchange(other.descriptor_, -1)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    std::swap(name_, other.name_);
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

FileLock::~FileLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

bool FileLock::TryAlone() {
    if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return true;
    if (errno == EWOULDBLOCK) return false;
    throw FileError(errno, name_);
}

void FileLock::Share() {
    while (::flock(descriptor_, LOCK_SH) != 0) {
        if (errno != EINTR) throw FileError(errno, name_);
    }
}

void FileLock::Release() {
    ::flock(descriptor_, LOCK_UN);
}

void FileLock::Write(const std::string& text) {
    const bool written = ::ftruncate(descriptor_, 0) == 0 && ::pwrite(descriptor_, text.data(), text.size(),
                                                                      0) == static_cast<ssize_t>(text.size());
    if (!written) throw FileError(errno, name_);
}

std::string FileLock::Read(std::size_t size) const {
    std::string text(size, '\0');
    const ssize_t count = ::pread(descriptor_, text.data(), size, 0);
    text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return text;
}

}  // namespace zorvel
