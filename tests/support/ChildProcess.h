#pragma once

#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace brindle {

/// Runs `body` in a forked process, which ends with 0 when it returns and with 1 when it throws; gives the
/// status of waitpid(2). For what must be killed, or must not be root. Call while no other thread runs.
inline int inChildProcess(const std::function<void()>& body) {
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process could be started");
    if (child == 0) {
        try {
            body();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

}  // namespace brindle
