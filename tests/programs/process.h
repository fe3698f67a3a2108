// A program that runs beside the test.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace zorvel::test {

class Process {
  public:
    // Starts `program` without a display; its runtime files go into `folder`.
    Process(const std::filesystem::path& program, std::vector<std::string> arguments,
            const std::filesystem::path& folder)
        : id_(fork()) {
        if (id_ != 0) return;
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
        std::vector<char*> words;
        arguments.insert(arguments.begin(), program.string());
        for (std::string& argument : arguments)
            words.push_back(argument.data());
        words.push_back(nullptr);
        execv(program.c_str(), words.data());
        _exit(127);
    }
    ~Process() {
        if (ended_) return;
        Send(SIGKILL);
        Wait();
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void Send(int signal) const { kill(id_, signal); }
    // Waits for the end; the exit status, or the number of the signal that ended it, negative.
    int Wait() {
        int status = 0;
        waitpid(id_, &status, 0);
        ended_ = true;
        return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    }

  private:
    pid_t id_;
    bool ended_ = false;
};

}  // namespace zorvel::test
