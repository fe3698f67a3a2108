// Preloaded into a program: counts the calls by which it changes files of one folder, and kills it or lets
// calls fail at one of them. The environment says what is wanted:
//   ZORVEL_FAULT         "count 0", "kill N", "fail N" or "full N"
//   ZORVEL_FAULT_FOLDER  the folder
//   ZORVEL_FAULT_REPORT  a file outside of it, for the number of calls, or for the call that was hit
// A kill in a write leaves half of its bytes. "fail" lets the N-th call fail; "full" fills the disk in the
// middle of the N-th: from then on no call gets room, while those that need none work.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

template <typename Call>
Call* Real(const char* name) {
    return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));
}

// What becomes of a call.
enum class Fate { kRuns, kDies, kFails, kGetsHalf };

class Plan {
  public:
    Plan() : folder_(Variable("ZORVEL_FAULT_FOLDER")), report_(Variable("ZORVEL_FAULT_REPORT")) {
        const std::string fault = Variable("ZORVEL_FAULT");
        kind_ = fault.substr(0, fault.find(' '));
        at_ = std::atol(fault.substr(std::min(fault.find(' '), fault.size())).c_str());
    }
    ~Plan() {
        if (kind_ == "count") Report(std::to_string(calls_));
    }
    Plan(const Plan&) = delete;
    Plan& operator=(const Plan&) = delete;

    bool Concerns(std::string_view path) const { return !folder_.empty() && path.starts_with(folder_); }
    Fate Next(const char* call, const std::string& path, bool needs_room) {
        ++calls_;
        if (kind_ == "full" && calls_ > at_ && needs_room) {
            errno = ENOSPC;
            return Fate::kFails;
        }
        if (calls_ != at_ || (kind_ == "full" && !needs_room)) return Fate::kRuns;
        Report(std::string(call) + ' ' + path);
        if (kind_ == "kill") return Fate::kDies;
        errno = kind_ == "full" ? ENOSPC : EIO;
        return kind_ == "full" ? Fate::kGetsHalf : Fate::kFails;
    }

  private:
    static std::string Variable(const char* name) {
        const char* const value = std::getenv(name);
        return value == nullptr ? "" : value;
    }
    void Report(const std::string& text) const {
        const int file = Real<int(const char*, int, ...)>("open")(report_.c_str(), O_WRONLY | O_CREAT, 0600);
        Real<ssize_t(int, const void*, std::size_t)>("write")(file, text.data(), text.size());
        Real<int(int)>("close")(file);
    }

    std::string folder_;
    std::string report_;
    std::string kind_;
    long at_ = 0;
    long calls_ = 0;
};

Plan& ThePlan() {
    static Plan plan;
    return plan;
}

[[noreturn]] void Die() {
    kill(getpid(), SIGKILL);
    for (;;)
        pause();
}

std::string PathOf(int file) {
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    return length < 0 ? std::string() : std::string(path.data(), static_cast<std::size_t>(length));
}

// A call that does all or nothing: `run` makes it.
template <typename Run>
auto Whole(const char* call, const std::string& path, bool needs_room, Run run) -> decltype(run()) {
    if (!ThePlan().Concerns(path)) return run();
    const Fate fate = ThePlan().Next(call, path, needs_room);
    if (fate == Fate::kRuns) return run();
    if (fate == Fate::kDies) Die();
    return -1;
}

// A call that transfers `size` bytes, and can stop in the middle: `run` makes it for a size.
template <typename Run>
ssize_t Transfer(const char* call, int file, std::size_t size, Run run) {
    const std::string path = PathOf(file);
    if (!ThePlan().Concerns(path)) return run(size);
    const Fate fate = ThePlan().Next(call, path, true);
    if (fate == Fate::kRuns) return run(size);
    if (fate == Fate::kFails || (fate == Fate::kGetsHalf && size < 2)) return -1;
    const ssize_t half = run(size / 2);
    if (fate == Fate::kDies) Die();
    return half;
}

int Open(const char* call, const char* path, int flags, mode_t mode) {
    const auto run = [&] { return Real<int(const char*, int, ...)>(call)(path, flags, mode); };
    if ((flags & (O_CREAT | O_TRUNC)) == 0) return run();
    return Whole(call, path, (flags & O_CREAT) != 0 && access(path, F_OK) != 0, run);
}

int OpenAt(const char* call, int folder, const char* path, int flags, mode_t mode) {
    const auto run = [&] { return Real<int(int, const char*, int, ...)>(call)(folder, path, flags, mode); };
    if ((flags & (O_CREAT | O_TRUNC)) == 0) return run();
    return Whole(call, path, (flags & O_CREAT) != 0 && faccessat(folder, path, F_OK, 0) != 0, run);
}

mode_t ModeOf(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? static_cast<mode_t>(va_arg(arguments, unsigned)) : 0;
}

}  // namespace

#define ZORVEL_OPEN(name)                             \
    int name(const char* path, int flags, ...) {      \
        va_list arguments;                            \
        va_start(arguments, flags);                   \
        const mode_t mode = ModeOf(flags, arguments); \
        va_end(arguments);                            \
        return Open(#name, path, flags, mode);        \
    }
#define ZORVEL_OPENAT(name)                                  \
    int name(int folder, const char* path, int flags, ...) { \
        va_list arguments;                                   \
        va_start(arguments, flags);                          \
        const mode_t mode = ModeOf(flags, arguments);        \
        va_end(arguments);                                   \
        return OpenAt(#name, folder, path, flags, mode);     \
    }
#define ZORVEL_PWRITE(name)                                                                              \
    ssize_t name(int file, const void* bytes, std::size_t size, off_t place) {                           \
        return Transfer(#name, file, size, [&](std::size_t part) {                                       \
            return Real<ssize_t(int, const void*, std::size_t, off_t)>(#name)(file, bytes, part, place); \
        });                                                                                              \
    }
#define ZORVEL_ON_PATH(name)                                                                            \
    int name(const char* path) noexcept {                                                               \
        return Whole(#name, path, false, [&] { return Real<int(const char*) noexcept>(#name)(path); }); \
    }
#define ZORVEL_TRUNCATE(name)                                                            \
    int name(int file, off_t size) noexcept {                                            \
        return Whole(#name, PathOf(file), false,                                         \
                     [&] { return Real<int(int, off_t) noexcept>(#name)(file, size); }); \
    }
#define ZORVEL_SYNC(name)                                                                      \
    int name(int file) {                                                                       \
        return Whole(#name, PathOf(file), false, [&] { return Real<int(int)>(#name)(file); }); \
    }
#define ZORVEL_SENDFILE(name)                                                                          \
    ssize_t name(int out, int in, off_t* place, std::size_t size) noexcept {                           \
        return Transfer(#name, out, size, [&](std::size_t part) {                                      \
            return Real<ssize_t(int, int, off_t*, std::size_t) noexcept>(#name)(out, in, place, part); \
        });                                                                                            \
    }

extern "C" {
#undef open64
ZORVEL_OPEN(open)
ZORVEL_OPEN(open64)
ZORVEL_OPENAT(openat)
ZORVEL_OPENAT(openat64)
ZORVEL_PWRITE(pwrite)
ZORVEL_PWRITE(pwrite64)
ZORVEL_ON_PATH(unlink)
ZORVEL_ON_PATH(remove)
ZORVEL_ON_PATH(rmdir)
ZORVEL_TRUNCATE(ftruncate)
ZORVEL_TRUNCATE(ftruncate64)
ZORVEL_SYNC(fsync)
ZORVEL_SYNC(fdatasync)
ZORVEL_SENDFILE(sendfile)
ZORVEL_SENDFILE(sendfile64)

ssize_t write(int file, const void* bytes, std::size_t size) {
    return Transfer("write", file, size, [&](std::size_t part) {
        return Real<ssize_t(int, const void*, std::size_t)>("write")(file, bytes, part);
    });
}

int rename(const char* from, const char* to) noexcept {
    return Whole("rename", to, false,
                 [&] { return Real<int(const char*, const char*) noexcept>("rename")(from, to); });
}

int mkdir(const char* path, mode_t mode) noexcept {
    return Whole("mkdir", path, true,
                 [&] { return Real<int(const char*, mode_t) noexcept>("mkdir")(path, mode); });
}
}
