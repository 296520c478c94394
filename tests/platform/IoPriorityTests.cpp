#include "platform/IoPriority.h"

#include <gtest/gtest.h>
#include <linux/ioprio.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace brindle {
namespace {

long ioPriority() {
    return syscall(SYS_ioprio_get, IOPRIO_WHO_PROCESS, 0);
}

TEST(IdleIoPriority, HoldsForItsScopeOnly) {
    const auto lowest = IOPRIO_PRIO_VALUE(IOPRIO_CLASS_BE, 7);
    if (syscall(SYS_ioprio_set, IOPRIO_WHO_PROCESS, 0, lowest) != 0) GTEST_SKIP() << "no I/O priorities here";
    {
        const IdleIoPriority idle;
        EXPECT_EQ(IOPRIO_PRIO_CLASS(ioPriority()), IOPRIO_CLASS_IDLE);
    }
    EXPECT_EQ(ioPriority(), lowest);
}

}  // namespace
}  // namespace brindle
