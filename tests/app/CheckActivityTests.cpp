#include "app/CheckActivity.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(CheckActivity, IsDescribedInOneLine) {
    CheckActivity activity{.locationName = "Documents", .filesSeen = 1234};
    EXPECT_EQ(description(activity), "Checking your files… Documents · 1,234 files");
    activity.isEstimating = true;
    EXPECT_EQ(description(activity), "Estimating earlier history from file dates… Documents");
}

}  // namespace
}  // namespace brindle
