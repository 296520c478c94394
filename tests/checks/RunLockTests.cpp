#include "checks/RunLock.h"
#include "support/TempFolder.h"

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace brindle {
namespace {

/// Another process that holds the lock of a history until it is killed.
class OtherProgram {
public:
    explicit OtherProgram(const std::string& directory) {
        int ready[2];
        if (pipe(ready) != 0) throw std::runtime_error("no pipe could be made");
        process_ = fork();
        if (process_ == 0) {
            const RunLock lock(directory, RunLock::WhenTaken::refuse, CancellationFlag());
            static_cast<void>(!write(ready[1], "x", 1));
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

class Lock : public testing::Test {
protected:
    void take(RunLock::WhenTaken whenTaken) { const RunLock lock(directory, whenTaken, cancellation); }

    TempFolder folder;
    std::string directory = (folder.path() / "data").string();
    CancellationFlag cancellation;
};

TEST_F(Lock, RefusesASecondProgramAndTellsWhoHasIt) {
    OtherProgram other(directory);
    try {
        take(RunLock::WhenTaken::refuse);
        ADD_FAILURE() << "two programs hold the lock";
    } catch (const RunLocked& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("process " + std::to_string(other.process())));
    }
    // Killed, it left its file, and no lock.
    other.die();
    EXPECT_NO_THROW(take(RunLock::WhenTaken::refuse));
    EXPECT_NO_THROW(take(RunLock::WhenTaken::refuse));
}

TEST_F(Lock, IsAskedForWithoutBeingTaken) {
    EXPECT_EQ(otherProgramText(directory), std::nullopt);  // and no file is made by asking
    EXPECT_FALSE(std::filesystem::exists(directory));
    OtherProgram other(directory);
    EXPECT_THAT(otherProgramText(directory).value_or(""),
                testing::HasSubstr("process " + std::to_string(other.process())));
    other.die();
    EXPECT_EQ(otherProgramText(directory), std::nullopt);
}

TEST_F(Lock, WaitsUntilTheOtherProgramIsDoneOrTheUserHasEnough) {
    OtherProgram other(directory);
    std::thread impatient([this] { cancellation.set(); });
    EXPECT_THROW(take(RunLock::WhenTaken::wait), Cancelled);
    impatient.join();

    std::thread end([&other] { other.die(); });
    const CancellationFlag patient;
    EXPECT_NO_THROW(RunLock(directory, RunLock::WhenTaken::wait, patient));
    end.join();
}

}  // namespace
}  // namespace brindle
