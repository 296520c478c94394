#include "checks/RunLock.h"
#include "support/TempFolder.h"

#include <atomic>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace brindle {
namespace {

TEST(RunLock, IsSharedInThisProgramUntilTheLastHolderIsDone) {
    const TempFolder folder;
    const std::string directory = (folder.path() / "data").string();
    const auto takeFrom = [](RunLockSource& source) {
        return source.take(RunLock::WhenTaken::refuse, CancellationFlag());
    };
    RunLockSource source(directory);
    std::optional first(takeFrom(source));
    std::optional second(takeFrom(source));
    RunLockSource otherProgram(directory);
    EXPECT_THROW((void)takeFrom(otherProgram), RunLocked);
    first.reset();
    EXPECT_THROW((void)takeFrom(otherProgram), RunLocked);
    second.reset();
    EXPECT_NO_THROW((void)takeFrom(otherProgram));

    // Whoever comes just as the last holder leaves gets it all the same.
    std::vector<std::thread> holders;
    std::atomic<int> refused = 0;
    for (int i = 0; i < 4; ++i)
        holders.emplace_back([&] {
            for (int n = 0; n < 100; ++n) try {
                    (void)takeFrom(source);
                } catch (const RunLocked&) {
                    ++refused;
                }
        });
    for (std::thread& holder : holders) holder.join();
    EXPECT_EQ(refused, 0);
}

}  // namespace
}  // namespace brindle
