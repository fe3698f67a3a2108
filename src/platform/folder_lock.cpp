#include "platform/folder_lock.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::size_t kLongestHolder = 4096;

std::string HostName() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "this host";
}

// Takes what stands in front of the next TAB, or all of it.
std::string TakeField(std::string_view& text) {
    const std::size_t end = text.find('\t');
    std::string field(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return field;
}

// Whether a process of this host has ended, so that what it wrote is no longer so.
bool HasEnded(const std::string& process) {
    pid_t id = 0;
    const char* const end = process.data() + process.size();
    const bool is_number = std::from_chars(process.data(), end, id).ptr == end;
    return is_number && id > 0 && ::kill(id, 0) != 0 && errno == ESRCH;
}

}  // namespace

std::string LockHolder::Text() const {
    if (process.empty()) return "another program";
    return "'" + command + "' (process " + process + " on " + host + ")";
}

FolderLock::FolderLock(std::filesystem::path path, std::string name)
    : path_(std::move(path)), name_(std::move(name)) {}

bool FolderLock::TryAcquire(std::string_view command) {
    if (!lock_) lock_.emplace(path_, name_);
    if (!lock_->TryAlone()) return false;
    try {
        lock_->Write(std::to_string(::getpid()) + '\t' + HostName() + '\t' + std::string(command));
    } catch (const Error&) {
        // The lock is what matters; others will not be told whose it is.
    }
    return true;
}

void FolderLock::Release() {
    if (!lock_) return;
    try {
        lock_->Write({});
    } catch (const Error&) {
        // Whoever takes it next writes its own.
    }
    lock_.reset();
}

LockHolder FolderLock::Holder() const {
    if (!lock_) return {};
    const std::string content = lock_->Read(kLongestHolder);
    std::string_view rest = content;
    LockHolder holder;
    holder.process = TakeField(rest);
    holder.host = TakeField(rest);
    holder.command = rest;
    return holder.host == HostName() && HasEnded(holder.process) ? LockHolder() : holder;
}

}  // namespace zorvel
