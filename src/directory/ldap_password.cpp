#include "directory/ldap_password.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

constexpr int kSliceMilliseconds = 50;
constexpr std::size_t kLongestOutput = std::size_t{64} * 1024;

[[noreturn]] void Fail(const std::string& reason) {
    throw Error(errors::kDirectoryUnreadable).With(reason);
}

std::string FirstLine(std::string text) {
    text.resize(std::min(text.find_first_of("\r\n"), text.size()));
    return text;
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    void Close() {
        if (number_ >= 0) ::close(std::exchange(number_, -1));
    }

  private:
    int number_;
};

// A program that runs until it ends or is no longer wanted.
class Command {
  public:
    Command(const std::vector<std::string>& words, int output) {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        std::vector<char*> arguments;
        for (const std::string& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        const int code =
            ::posix_spawnp(&process_, arguments.front(), &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (code != 0) Fail("password_command '" + FromUtf8(words.front()) + "': " + std::strerror(code));
    }
    ~Command() {
        if (process_ <= 0) return;
        ::kill(process_, SIGTERM);
        End();
    }
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    // Waits for its end; true when it says that all went well.
    bool End() {
        int status = 0;
        while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = 0;
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

  private:
    pid_t process_ = 0;
};

std::string OutputOf(const std::vector<std::string>& texts, const WhileWaiting& wait) {
    std::vector<std::string> words;
    for (const std::string& text : texts)
        words.push_back(ToUtf8(text));
    std::array<int, 2> pipe_ends{};
    if (::pipe2(pipe_ends.data(), O_CLOEXEC) != 0)
        Fail(std::string("password_command: ") + std::strerror(errno));
    const Descriptor from(pipe_ends[0]);
    Descriptor to(pipe_ends[1]);
    Command command(words, to.number());
    to.Close();
    std::string output;
    for (;;) {
        pollfd ready{from.number(), POLLIN, 0};
        const int count = ::poll(&ready, 1, kSliceMilliseconds);
        if (count == 0 && wait) wait();
        if (count <= 0) continue;
        std::array<char, 4096> bytes{};
        const ssize_t size = ::read(from.number(), bytes.data(), bytes.size());
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) break;
        output.append(bytes.data(), static_cast<std::size_t>(size));
        if (output.size() > kLongestOutput) Fail("password_command '" + texts.front() + "' says too much");
    }
    if (!command.End()) Fail("password_command '" + texts.front() + "' failed");
    return output;
}

}  // namespace

std::string FetchPassword(const Files& files, const LdapSettings& settings, std::string_view tree,
                          const AskPassword& ask, const WhileWaiting& wait) {
    if (settings.bind_dn.empty()) return {};
    if (!settings.password_command.empty()) return FirstLine(OutputOf(settings.password_command, wait));
    if (!settings.password_file.empty()) {
        try {
            return FirstLine(files.Read(settings.password_file));
        } catch (const Error& error) {
            Fail("password_file: " + error.Reason());
        }
    }
    const std::optional<std::string> said = ask ? ask(tree, FromUtf8(settings.bind_dn)) : std::nullopt;
    if (!said)
        Fail("Nobody gave the password of '" + FromUtf8(settings.bind_dn) +
             "' - choose the tree again to be asked");
    return *said;
}

}  // namespace zorvel
