// Actions in a process of their own.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace zorvel::test {

// Runs `action` in a child process; its exit status as waitpid gives it, 0 when `action` returned.
inline int InAChild(const std::function<void()>& action) {
    const pid_t child = fork();
    if (child == 0) {
        action();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

// The same for what is refused to users, as nothing is to root.
inline int InAChildWithoutRights(const std::function<void()>& action) {
    return InAChild([&action] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && setuid(kNobody) != 0) _exit(1);
        action();
    });
}

}  // namespace zorvel::test
