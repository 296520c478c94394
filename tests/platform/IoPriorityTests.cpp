#include "platform/IoPriority.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace brindle {
namespace {

// As ioprio_set(2) gives them.
constexpr int ofProcess = 1;
constexpr int bestEffortClass = 2;
constexpr int idleClass = 3;
constexpr int classShift = 13;

long ioPriority() {
    return syscall(SYS_ioprio_get, ofProcess, 0);
}

TEST(IdleIoPriority, HoldsForItsScopeOnly) {
    const auto lowest = bestEffortClass << classShift | 7;
    if (syscall(SYS_ioprio_set, ofProcess, 0, lowest) != 0) GTEST_SKIP() << "no I/O priorities here";
    {
        const IdleIoPriority idle;
        EXPECT_EQ(ioPriority() >> classShift, idleClass);
    }
    EXPECT_EQ(ioPriority(), lowest);
}

}  // namespace
}  // namespace brindle
