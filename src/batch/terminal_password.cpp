#include "batch/terminal_password.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <string_view>

namespace zorvel {
namespace {

class Terminal {
  public:
    Terminal() : descriptor_(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY)) {
        if (descriptor_ < 0 || ::tcgetattr(descriptor_, &before_) != 0) return;
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        silent_ = ::tcsetattr(descriptor_, TCSAFLUSH, &silent) == 0;
    }
    ~Terminal() {
        if (silent_) ::tcsetattr(descriptor_, TCSAFLUSH, &before_);
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // True when what is typed is not shown.
    bool silent() const { return silent_; }

    void Write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t written = ::write(descriptor_, text.data(), text.size());
            if (written <= 0) return;
            text.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    // A line without its end; nothing when there is none, or a signal comes.
    std::optional<std::string> ReadLine() const {
        std::string line;
        for (char character = 0; ::read(descriptor_, &character, 1) == 1;) {
            if (character == '\n') return line;
            line += character;
        }
        return std::nullopt;
    }

  private:
    int descriptor_;
    termios before_{};
    bool silent_ = false;
};

}  // namespace

std::optional<std::string> ReadPassword(const std::string& prompt) {
    const Terminal terminal;
    if (!terminal.silent()) return std::nullopt;
    terminal.Write(prompt);
    std::optional<std::string> password = terminal.ReadLine();
    terminal.Write("\n");
    return password;
}

}  // namespace zorvel
