#include "checks/RunLock.h"
#include "support/OtherProgram.h"
#include "support/TempFolder.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace brindle {
namespace {

class Lock : public testing::Test {
protected:
    void take(RunLock::WhenTaken whenTaken) {
        const RunLock lock = RunLockSource(directory).take(whenTaken, cancellation);
    }

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
    EXPECT_NO_THROW((void)RunLockSource(directory).take(RunLock::WhenTaken::wait, patient));
    end.join();
}

TEST_F(Lock, IsSharedInThisProgramUntilTheLastHolderIsDone) {
    RunLockSource source(directory);
    std::optional first(source.take(RunLock::WhenTaken::refuse, cancellation));
    std::optional second(source.take(RunLock::WhenTaken::refuse, cancellation));
    const auto expectRefused = [&] { EXPECT_THROW(take(RunLock::WhenTaken::refuse), RunLocked); };
    expectRefused();
    first.reset();
    expectRefused();
    second.reset();
    EXPECT_NO_THROW(take(RunLock::WhenTaken::refuse));

    // Whoever comes just as the last holder leaves gets it all the same.
    std::vector<std::thread> holders;
    std::atomic<int> refused = 0;
    for (int i = 0; i < 4; ++i)
        holders.emplace_back([&] {
            for (int n = 0; n < 100; ++n) try {
                    (void)source.take(RunLock::WhenTaken::refuse, cancellation);
                } catch (const RunLocked&) {
                    ++refused;
                }
        });
    for (std::thread& holder : holders) holder.join();
    EXPECT_EQ(refused, 0);
}

}  // namespace
}  // namespace brindle
