#include "checks/Maintenance.h"
#include "model/Retention.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace brindle {
namespace {

using testing::ElementsAre;

constexpr UnixTime day = 86'400;

class Maintenance : public testing::Test {
protected:
    void run(const std::string& id, const Files& files) {
        history.check(id, files);
        keepUp();
    }
    void keepUp() {
        maintain(
            history.store(), [this] { return history.now; }, history.calendar);
    }

    [[nodiscard]] std::vector<std::string> days() const {
        return history.rows("SELECT local_day FROM scan_runs ORDER BY 1");
    }

    TempHistory history;
};

TEST_F(Maintenance, AClockThatIsWrongForADayCostsNothing) {
    history.include("home");
    for (int i = 0; i < 3; ++i, history.now += day) run("home", {{"a", i}});
    const UnixTime right = history.now;
    history.now += 3650 * day;
    run("home", {{"a", 10}});
    history.now += 3600;
    run("home", {{"a", 11}});
    history.now = right;
    run("home", {{"a", 12}});
    EXPECT_THAT(days(), ElementsAre("2026-03-07", "2026-03-08", "2026-03-09", "2026-03-10", "2036-03-07",
                                    "2036-03-07"));
}

TEST_F(Maintenance, TheLogIsEmptiedAfterEveryRun) {
    history.include("home");
    Files files;
    for (int i = 0; i < 250'000; ++i) files[fmt::format("a folder with a name/{:06}", i)] = i;
    history.check("home", files);
    const auto large = history.store().logBytes();
    EXPECT_GT(large, 8U << 20);
    maintain(
        history.store(), [this] { return history.now; }, history.calendar);
    EXPECT_EQ(history.store().logBytes(), 0U) << "it was " << large;

    files["new"] = 1;
    run("home", files);
    EXPECT_EQ(history.store().logBytes(), 0U);
}

// Some thousand files, of which some grow, shrink, come and go at each of three checks a day.
TEST_F(Maintenance, YearsOfChecksTakeNoMoreThanNinetyDaysOfThem) {
    const int daysChecked = areTestsLong() ? 3 * 365 : 125;
    constexpr int checksADay = 3;
    constexpr int filesAtOnce = 1'500;
    constexpr int changesACheck = 40;
    history.now = history.calendar.time({2026, 1, 1}, 1);
    history.include("home");
    Files files;
    int made = 0;
    const auto add = [&] {
        files[fmt::format("folder{:02}/sub{:02}/file{:07}.dat", made % 37, made % 11, made)] =
            made % 5'000 + 1;
        ++made;
    };
    while (made < filesAtOnce) add();

    std::vector<std::int64_t> pages;
    std::vector<std::int64_t> endOfDay;
    for (int today = 0; today < daysChecked; ++today) {
        for (int check = 0; check < checksADay; ++check, history.now += day / checksADay) {
            for (int change = 0; change < changesACheck; ++change) {
                files.erase(files.begin());
                add();
            }
            files.begin()->second += 10;
            std::prev(files.end())->second += 10;
            history.check("home", files);
            if (check == 0) keepUp();  // it prunes once a day, and the rest is the disk's time
        }
        std::int64_t bytes = 0;
        for (const auto& [path, size] : files) bytes += size;
        endOfDay.push_back(bytes);
        if (today % 30 == 29) pages.push_back(std::stol(history.rows("PRAGMA page_count").front()));
    }

    reportRounds(daysChecked * checksADay, 0);
    RecordProperty("pages_every_30_days", fmt::format("{}", fmt::join(pages, " ")));
    RecordProperty("free_pages", history.rows("PRAGMA freelist_count").front());
    EXPECT_GT(pages[2], pages[0] * 3 / 2) << "the checks are too small to show anything";
    // Pages that pruning frees are used again; those that are partly filled are the slack.
    const std::int64_t full = pages[2];
    for (std::size_t i = 3; i < pages.size(); ++i) EXPECT_LT(pages[i], full + full / 5);

    EXPECT_THAT(history.rows("SELECT COUNT(DISTINCT local_day), COUNT(*) FROM scan_runs"),
                ElementsAre(fmt::format("{}|{}", keptDays, keptDays * checksADay)));
    // The tracked size of every kept day is known, and of the one before them.
    const auto totals = history.rows("SELECT bytes FROM tracked_totals ORDER BY local_day");
    ASSERT_EQ(totals.size(), keptDays + 1U);
    for (std::size_t i = 0; i < totals.size(); ++i)
        EXPECT_EQ(totals[totals.size() - 1 - i], std::to_string(endOfDay[endOfDay.size() - 1 - i]));
    EXPECT_EQ(history.rows("PRAGMA integrity_check"), std::vector<std::string>{"ok"});
}

}  // namespace
}  // namespace brindle
