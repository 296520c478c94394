#include "model/Calendar.h"
#include "model/TimeZone.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

const fs::path zones = "/usr/share/zoneinfo";

/// How far the user's clocks are ahead in summer.
double hoursAhead() {
    const LocalDay day{2026, 7, 1};
    return (Calendar("en_US", "UTC").time(day) - Calendar::current().time(day)) / 3600;
}

// What counts is the very file that the system reads: it is replaced here, in a folder that only this process
// sees in its place.
TEST(TimeZone, ThatOfTheSystemIsFollowedOnceItIsLookedAtAgain) {
    SKIP_UNLESS_MOUNTS_WORK();
    if (!fs::exists(zones / "Asia/Tokyo")) GTEST_SKIP() << "this system has no time zones";
    ::unsetenv("TZ");
    const TempFolder folder;
    const fs::path current = folder.path() / "localtime";
    const auto replaceBy = [&](const fs::path& zone) {
        fs::create_symlink(zone, folder.path() / "new");
        fs::rename(folder.path() / "new", current);
    };
    replaceBy(zones / "Europe/Berlin");
    const auto mount = TestMount::bind(folder.path(), "/etc");
    (void)followSystemTimeZone();
    EXPECT_EQ(hoursAhead(), 2);
    EXPECT_FALSE(followSystemTimeZone()) << "nothing changed";

    replaceBy(zones / "Asia/Tokyo");
    EXPECT_EQ(hoursAhead(), 2) << "nobody looked";
    EXPECT_TRUE(followSystemTimeZone());
    EXPECT_EQ(hoursAhead(), 9);

    fs::remove(current);
    fs::copy_file(zones / "America/New_York", current);
    EXPECT_TRUE(followSystemTimeZone()) << "a copy in the place of a link";
    EXPECT_EQ(hoursAhead(), -4);
}

}  // namespace
}  // namespace brindle
