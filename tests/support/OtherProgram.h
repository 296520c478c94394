#pragma once

#include "platform/FileLock.h"
#include "platform/PrivateFiles.h"

#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace brindle {

/// Another process that holds the lock of a history until it is killed. Made while no other thread runs.
class OtherProgram {
public:
    explicit OtherProgram(const std::filesystem::path& dataDirectory) {
        int ready[2];
        if (pipe(ready) != 0) throw std::runtime_error("no pipe could be made");
        process_ = fork();
        if (process_ == 0) {
            createPrivateDirectory(dataDirectory.string());
            const auto lock = FileLock::tryToTake((dataDirectory / "check.lock").string());
            if (!lock || write(ready[1], "x", 1) != 1) _exit(1);
            for (;;) pause();
        }
        close(ready[1]);
        char taken = 0;
        if (read(ready[0], &taken, 1) != 1) throw std::runtime_error("the other program has no lock");
        close(ready[0]);
    }
    ~OtherProgram() { die(); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    [[nodiscard]] pid_t process() const { return process_; }

    void die() {
        if (process_ == 0) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = 0;
    }

private:
    pid_t process_ = 0;
};

}  // namespace brindle
