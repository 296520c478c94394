#include "checks/CheckDue.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(CheckDue, AtOnceThenOnTheIntervalAndNeverPutOffByAClockThatWasSetBack) {
    constexpr UnixTime begin = 1'772'884'800;
    EXPECT_TRUE(isCheckDue(begin, {}, 60));
    EXPECT_FALSE(isCheckDue(begin, begin, 5));
    EXPECT_FALSE(isCheckDue(begin + 299, begin, 5));
    EXPECT_TRUE(isCheckDue(begin + 300, begin, 5));
    EXPECT_TRUE(isCheckDue(begin + 86'400, begin, 60));  // the computer slept
    EXPECT_TRUE(isCheckDue(begin - 1, begin, 60));
}

}  // namespace
}  // namespace brindle
