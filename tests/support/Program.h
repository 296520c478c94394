#pragma once

#include "platform/FileDescriptor.h"

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace brindle {

/// What is started, and how.
struct ProgramLaunch {
    std::vector<std::string> arguments;    // the first is the program, looked for in the test's PATH
    std::vector<std::string> environment;  // "NAME=value"; nothing is inherited
    std::string folder = "/";              // the working folder
    int output = -1;                       // the descriptor for standard output; -1: kept for the result
    int error = -1;                        // likewise for standard error
    mode_t umask = 022;

    /// Sets or replaces a variable of the environment.
    void setVariable(const std::string& name, const std::string& value);
};

struct ProgramResult {
    int exitCode = 0;  // minus the number of the signal that ended it
    std::string output;
    std::string error;
};

/// A program as a process group of its own, which is ended when it goes. Standard input is empty.
class RunningProgram {
public:
    explicit RunningProgram(const ProgramLaunch& launch);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    [[nodiscard]] pid_t id() const { return id_; }
    [[nodiscard]] bool isRunning() const { return !endsWithin(std::chrono::milliseconds(0)); }
    void signal(int number) const;

    /// Waits for the end, which is brought about with SIGKILL when it takes longer than any test should.
    [[nodiscard]] ProgramResult wait();

private:
    [[nodiscard]] bool endsWithin(std::chrono::milliseconds time) const;

    FileDescriptor output_;
    FileDescriptor error_;
    pid_t id_ = -1;  // also the group's
    FileDescriptor process_;
    bool isReaped_ = false;
};

[[nodiscard]] ProgramResult runProgram(const ProgramLaunch& launch);

}  // namespace brindle
