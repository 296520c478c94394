#include "support/Program.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

constexpr std::chrono::seconds longestRun{120};

/// The form in which the system takes a list of texts.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::string contentsOf(const FileDescriptor& file) {
    std::string contents;
    std::array<char, 65536> part{};
    for (;;) {
        const auto size = ::pread(file.get(), part.data(), part.size(), static_cast<off_t>(contents.size()));
        if (size <= 0) return contents;
        contents.append(part.data(), static_cast<std::size_t>(size));
    }
}

}  // namespace

void ProgramLaunch::setVariable(const std::string& name, const std::string& value) {
    std::erase_if(environment, [&](const std::string& variable) { return variable.starts_with(name + "="); });
    environment.push_back(name + "=" + value);
}

// What is written goes to files in memory: a full pipe would stop the program.
RunningProgram::RunningProgram(const ProgramLaunch& launch)
    : output_(::memfd_create("output", MFD_CLOEXEC)), error_(::memfd_create("error", MFD_CLOEXEC)) {
    auto arguments = launch.arguments;
    auto environment = launch.environment;
    const auto argumentPointers = pointersTo(arguments);
    const auto environmentPointers = pointersTo(environment);
    const FileDescriptor input(::open("/dev/null", O_RDONLY | O_CLOEXEC));

    id_ = ::fork();
    if (id_ < 0) throw std::system_error(errno, std::generic_category());
    if (id_ == 0) {
        ::setpgid(0, 0);
        ::umask(launch.umask);
        if (::chdir(launch.folder.c_str()) != 0) ::_exit(127);
        ::dup2(input.get(), STDIN_FILENO);
        ::dup2(launch.output >= 0 ? launch.output : output_.get(), STDOUT_FILENO);
        ::dup2(launch.error >= 0 ? launch.error : error_.get(), STDERR_FILENO);
        ::execvpe(argumentPointers.front(), argumentPointers.data(), environmentPointers.data());
        ::_exit(127);
    }
    ::setpgid(id_, id_);
    process_ = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, id_, 0)));
    if (!process_) throw std::system_error(errno, std::generic_category());
}

RunningProgram::~RunningProgram() {
    if (isReaped_) return;
    ::kill(-id_, SIGKILL);
    ::waitpid(id_, nullptr, 0);
}

void RunningProgram::signal(int number) const {
    if (::kill(id_, number) != 0) throw std::system_error(errno, std::generic_category());
}

ProgramResult RunningProgram::wait() {
    if (!endsWithin(longestRun)) ::kill(-id_, SIGKILL);
    int status = 0;
    ::waitpid(id_, &status, 0);
    isReaped_ = true;
    return {.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
            .output = contentsOf(output_),
            .error = contentsOf(error_)};
}

bool RunningProgram::endsWithin(std::chrono::milliseconds time) const {
    pollfd end{.fd = process_.get(), .events = POLLIN, .revents = 0};
    return ::poll(&end, 1, static_cast<int>(time.count())) > 0;
}

ProgramResult runProgram(const ProgramLaunch& launch) {
    return RunningProgram(launch).wait();
}

}  // namespace brindle
