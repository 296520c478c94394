#include "store/SQLiteConnection.h"
#include "support/TempHistory.h"

#include <chrono>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UnixTime secondsADay = 86'400;

/// A location with one change on each of these days of March 2026, at noon.
void checkOn(TempHistory& history, const std::string& id, std::initializer_list<int> days) {
    const UnixTime first = history.calendar.time({2026, 3, 1}, 12);
    for (const int number : days) {
        history.now = first + (number - 1) * secondsADay;
        CheckRequest request = history.request(id, scriptedWalk({{"file", number}}));
        request.readVolume = [&history, id] {
            return VolumeReading{.id = id, .name = id, .readAt = history.now};
        };
        history.store().commit(request).get();
    }
}

void estimateOn(TempHistory& history, const std::string& id, std::initializer_list<int> days) {
    std::vector<EstimateRow> rows;
    for (const int number : days) rows.push_back({{2026, 3, number}, "", "file", {1, 1}});
    static_cast<void>(history.store()
                          .replaceEstimates({.locationID = {id},
                                             .walk = [&rows](const EstimateGroupSink&) { return rows; },
                                             .now = [&history] { return history.now; }})
                          .get());
}

TEST(Retention, PruningKeepsTheLatestTotalBeforeTheCutoffAndNothingElseOfIt) {
    TempHistory history;
    history.include("daily");
    history.include("seldom");
    history.include("past");
    checkOn(history, "daily", {1, 2, 9, 10, 11});
    checkOn(history, "seldom", {3, 4, 20});
    checkOn(history, "past", {5, 6});
    estimateOn(history, "daily", {8, 9, 10, 11});
    history.store().recordExport("/old.csv", 0).get();
    const auto kept = history.rows("SELECT * FROM inventory UNION ALL SELECT path, 0, 0 FROM exported_files");
    const auto locations = history.rows("SELECT * FROM locations");

    history.store().prune({2026, 3, 10}).get();
    for (const char* table : {"observations", "scan_runs", "daily_totals"})
        EXPECT_THAT(history.rows(fmt::format("SELECT location_id, local_day FROM {} ORDER BY 1, 2", table)),
                    ElementsAre("daily|2026-03-10", "daily|2026-03-11", "seldom|2026-03-20"))
            << table;
    EXPECT_THAT(history.rows("SELECT volume_id, local_day FROM capacity_samples ORDER BY 1, 2"),
                ElementsAre("daily|2026-03-10", "daily|2026-03-11", "seldom|2026-03-20"));
    EXPECT_THAT(history.rows("SELECT local_day FROM estimates"), ElementsAre("2026-03-10", "2026-03-11"));
    EXPECT_THAT(history.rows("SELECT location_id, local_day, bytes FROM tracked_totals"),
                ElementsAre("daily|2026-03-09|9", "daily|2026-03-10|10", "daily|2026-03-11|11",
                            "past|2026-03-06|6", "seldom|2026-03-04|4", "seldom|2026-03-20|20"));
    EXPECT_EQ(history.rows("SELECT * FROM inventory UNION ALL SELECT path, 0, 0 FROM exported_files"), kept);
    EXPECT_EQ(history.rows("SELECT * FROM locations"), locations);

    const auto pruned = history.everything();
    history.store().prune({2026, 3, 10}).get();
    EXPECT_EQ(history.everything(), pruned);
    // Days on which nothing was checked: the total that is carried forward moves on with the cutoff.
    history.store().prune({2026, 3, 15}).get();
    EXPECT_THAT(history.rows("SELECT location_id, local_day FROM tracked_totals"),
                ElementsAre("daily|2026-03-11", "past|2026-03-06", "seldom|2026-03-04", "seldom|2026-03-20"));
}

TEST(Retention, PruningIsDueWhenSomethingIsOlderAndTodayIsNotTheOnlyWitness) {
    TempHistory history;
    const auto isDue = [&history](int before, int today) {
        return history.store().isPruningDue({2026, 3, before}, {2026, 3, today}).get();
    };
    EXPECT_FALSE(isDue(31, 31));
    history.include("home");
    checkOn(history, "home", {10, 20, 21});
    EXPECT_FALSE(isDue(10, 21));
    EXPECT_TRUE(isDue(11, 21));
    EXPECT_FALSE(isDue(21, 21));  // all but today's check would go
    history.store().prune({2026, 3, 11}).get();
    EXPECT_FALSE(isDue(11, 21));
    // Estimates are of days long before the first check.
    estimateOn(history, "home", {2});
    EXPECT_TRUE(isDue(3, 21));
    EXPECT_FALSE(isDue(2, 21));
}

TEST(Retention, ACheckpointWaitsForNoReaderAndTheNextOneEmptiesTheLog) {
    TempHistory history;
    history.include("home");
    checkOn(history, "home", {1, 2, 3});
    EXPECT_GT(history.store().logBytes(), 0U);
    {
        SQLiteConnection other(history.file());
        auto rows = other.prepare("SELECT local_day FROM tracked_totals");
        ASSERT_TRUE(rows.step());
        checkOn(history, "home", {4});
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_FALSE(history.store().checkpoint().get());
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
        rows.finish();
    }
    checkOn(history, "home", {5});
    EXPECT_TRUE(history.store().checkpoint().get());
    EXPECT_EQ(history.store().logBytes(), 0U);
    EXPECT_EQ(history.rows("PRAGMA integrity_check"), std::vector<std::string>{"ok"});
    EXPECT_EQ(history.rows("SELECT COUNT(*) FROM scan_runs"), std::vector<std::string>{"5"});
}

TEST(ExportLog, GivesTheLatestPathsFirstAndEachOnce) {
    TempHistory history;
    EXPECT_THAT(history.store().recentExports().get(), IsEmpty());
    for (int i = 0; i < 502; ++i) history.store().recordExport(fmt::format("/{}.csv", i), i).wait();
    history.store().recordExport("/1.csv", 1000).get();
    const auto paths = history.store().recentExports().get();
    ASSERT_EQ(paths.size(), 500U);
    EXPECT_EQ(paths[0], "/1.csv");
    EXPECT_EQ(paths[1], "/501.csv");
    EXPECT_EQ(paths.back(), "/3.csv");
    EXPECT_EQ(history.rows("SELECT COUNT(*) FROM exported_files"), std::vector<std::string>{"502"});
}

}  // namespace
}  // namespace brindle
