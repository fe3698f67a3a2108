#include "faults/program_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <system_error>

#include "support/temp_folder.h"

namespace zorvel::test {
namespace {

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

ProgramRun::ProgramRun(std::vector<std::string> command, const std::filesystem::path& folder,
                       const std::filesystem::path& scratch, const std::string& fault)
    : scratch_(scratch) {
    std::filesystem::remove(scratch / "hit");
    std::vector<std::string> environment = {"PATH=/usr/bin:/bin", "LANG=C.UTF-8", "QT_QPA_PLATFORM=offscreen",
                                            "HOME=" + scratch.string()};
    if (!fault.empty()) {
        environment.insert(environment.end(), {"LD_PRELOAD=" ZORVEL_FAULT_SHIM, "ZORVEL_FAULT=" + fault,
                                               "ZORVEL_FAULT_FOLDER=" + folder.string() + '/',
                                               "ZORVEL_FAULT_REPORT=" + (scratch / "hit").string()});
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int kHow = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 1, (scratch / "output").c_str(), kHow, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, (scratch / "errors").c_str(), kHow, 0600);
    const int error = posix_spawn(&id_, command.front().c_str(), &actions, nullptr, Pointers(command).data(),
                                  Pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::system_error(error, std::generic_category(), command.front());
}

Outcome ProgramRun::Wait() {
    int status = 0;
    waitpid(id_, &status, 0);
    return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), ReadFile(scratch_ / "output"),
            ReadFile(scratch_ / "errors"), ReadFile(scratch_ / "hit")};
}

}  // namespace zorvel::test
