#include "model/DayState.h"
#include "support/TempHistory.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr UnixTime hour = 3600;

/// One location, checked wherever its user is and whatever the clock says. Every check finds one byte more.
class Days : public testing::Test {
protected:
    Days() { history.include("home"); }

    void goTo(const char* zone) { history.calendar = Calendar("en_US", zone); }

    /// A check that ends when the clock shows this hour of the day.
    void check(const LocalDay& day, double hourOfDay) {
        history.now = history.calendar.time(day) + hourOfDay * hour;
        history.check("home", {{"file", ++size}});
    }

    [[nodiscard]] std::vector<std::string> changesPerDay() const {
        return history.rows("SELECT local_day, COUNT(*) FROM observations GROUP BY 1 ORDER BY 1");
    }
    [[nodiscard]] std::vector<std::string> totalsPerDay() const {
        return history.rows("SELECT local_day, added FROM daily_totals ORDER BY 1");
    }
    [[nodiscard]] std::vector<std::string> trackedPerDay() const {
        return history.rows("SELECT local_day, bytes FROM tracked_totals ORDER BY 1");
    }

    TempHistory history;
    std::int64_t size = 0;
};

TEST_F(Days, ADayOfTwentyThreeOrTwentyFiveHoursIsOneDay) {
    goTo("Europe/Berlin");
    const auto checkEveryHour = [this](const LocalDay& first, int hours) {
        const UnixTime begin = history.calendar.time(first);
        for (int i = 0; i < hours; ++i) {
            history.now = begin + (i + 0.5) * hour;
            history.check("home", {{"file", ++size}});
        }
    };
    check({2026, 3, 27}, 12);
    checkEveryHour({2026, 3, 28}, 24 + 23 + 24);
    checkEveryHour({2026, 10, 24}, 24 + 25 + 24);
    EXPECT_THAT(changesPerDay(), ElementsAre("2026-03-28|24", "2026-03-29|23", "2026-03-30|24",
                                             "2026-10-24|24", "2026-10-25|25", "2026-10-26|24"));
    EXPECT_EQ(totalsPerDay(), changesPerDay());
}

TEST_F(Days, EastOverTheDateLineACalendarDayMayHaveNoCheckAndNoChangeIsLost) {
    goTo("Pacific/Honolulu");
    check({2026, 3, 6}, 20);
    check({2026, 3, 6}, 23);
    goTo("Pacific/Auckland");
    check({2026, 3, 8}, 6);  // eight hours later
    check({2026, 3, 8}, 12);
    EXPECT_THAT(totalsPerDay(), ElementsAre("2026-03-06|1", "2026-03-08|2"));
    EXPECT_THAT(trackedPerDay(), ElementsAre("2026-03-06|2", "2026-03-08|4"));
}

TEST_F(Days, WestOverTheDateLineADayGoesOnAndItsTotalsWithIt) {
    goTo("Pacific/Auckland");
    check({2026, 3, 7}, 20);
    check({2026, 3, 7}, 23);
    check({2026, 3, 8}, 10);
    goTo("Pacific/Honolulu");
    check({2026, 3, 7}, 20);  // nine hours later
    EXPECT_THAT(totalsPerDay(), ElementsAre("2026-03-07|2", "2026-03-08|1"));
    EXPECT_THAT(trackedPerDay(), ElementsAre("2026-03-07|4", "2026-03-08|3"));
    check({2026, 3, 8}, 10);
    EXPECT_THAT(totalsPerDay(), ElementsAre("2026-03-07|2", "2026-03-08|2"));
    EXPECT_THAT(trackedPerDay(), ElementsAre("2026-03-07|4", "2026-03-08|5"));
}

// A day is found by the name that it had where it was checked, wherever it is looked at.
TEST_F(Days, ADayWithACheckIsTrackedOnEitherSideOfTheDateLine) {
    const auto added = [this](const LocalDay& today, const LocalDay& day) -> std::optional<std::int64_t> {
        const auto state =
            dayState(history.store().snapshot(keptDays, today, history.calendar).get(), day, {});
        const auto* recorded = std::get_if<DayRecorded>(&state);
        return recorded == nullptr ? std::nullopt : std::optional(recorded->totals.added);
    };
    goTo("Pacific/Honolulu");
    check({2026, 3, 6}, 21);
    check({2026, 3, 6}, 23);
    goTo("Pacific/Auckland");  // where the first check was on the 7th
    check({2026, 3, 8}, 10);
    EXPECT_EQ(added({2026, 3, 8}, {2026, 3, 6}), 1);
    EXPECT_EQ(added({2026, 3, 8}, {2026, 3, 8}), 1);
    EXPECT_EQ(added({2026, 3, 8}, {2026, 3, 5}), std::nullopt);

    history.store().remove({"home"}, history.now + hour).get();
    goTo("Pacific/Honolulu");  // where it was removed on the 7th
    EXPECT_EQ(added({2026, 3, 8}, {2026, 3, 8}), 1);
    EXPECT_EQ(added({2026, 3, 9}, {2026, 3, 9}), std::nullopt);
}

TEST_F(Days, AClockSetBackPutsTheNextChangesOnTheDayItShows) {
    check({2026, 3, 7}, 12);
    check({2026, 3, 9}, 12);
    check({2026, 3, 8}, 12);
    check({2026, 3, 7}, 11);  // before the first check
    EXPECT_THAT(totalsPerDay(), ElementsAre("2026-03-07|1", "2026-03-08|1", "2026-03-09|1"));
    EXPECT_THAT(trackedPerDay(), ElementsAre("2026-03-07|4", "2026-03-08|3", "2026-03-09|2"));
    EXPECT_EQ(history.record("home").trackedBytes, 4);
    EXPECT_EQ(history.record("home").lastCheckAt, history.now);
}

TEST_F(Days, ACheckOverMidnightBelongsToTheDayOnWhichItEnded) {
    check({2026, 3, 7}, 23);
    CheckRequest request = history.request("home", [this](const EntrySink& sink) {
        history.now += 2 * hour;
        return scriptedWalk({{"file", ++size}, {"new", 10}})(sink);
    });
    const UnixTime readAt = history.calendar.time({2026, 3, 8}) - 1;
    request.readVolume = [readAt] { return VolumeReading{.id = "v", .readAt = readAt}; };
    history.store().commit(request).get();
    EXPECT_THAT(totalsPerDay(), ElementsAre("2026-03-08|11"));
    EXPECT_THAT(changesPerDay(), ElementsAre("2026-03-08|2"));
    EXPECT_THAT(trackedPerDay(), ElementsAre("2026-03-07|1", "2026-03-08|12"));
    EXPECT_THAT(history.rows("SELECT local_day FROM scan_runs ORDER BY id"),
                ElementsAre("2026-03-07", "2026-03-08"));
    EXPECT_THAT(history.rows("SELECT local_day FROM capacity_samples"), ElementsAre("2026-03-07"));
}

// Somebody who travels, and whose clock is wrong at times. Whatever the days, every difference between one
// check and the next is counted on exactly one of them.
TEST_F(Days, NoChangeIsLostOrCountedTwiceWhereverAndWheneverChecksAre) {
    const char* zones[] = {"Europe/Berlin",  "Pacific/Honolulu",  "Pacific/Kiritimati", "America/Havana",
                           "Asia/Kathmandu", "Pacific/Pago_Pago", "Australia/Lord_Howe"};
    for (unsigned seed = 1; seed <= 8; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&random](int end) {
            return static_cast<int>(random() % static_cast<unsigned>(end));
        };
        TempHistory travels;
        travels.include("home");
        travels.now = 1'761'350'400;  // the evening before Europe's clocks go back
        Files files;
        std::map<std::string, ChangeTotals> expected;
        std::map<std::string, std::int64_t> tracked;
        for (int i = 0; i < 120; ++i) {
            travels.now += below(10) == 0 ? -below(72) * hour : below(9) * hour / 2;
            if (below(6) == 0) travels.calendar = Calendar("en_US", zones[below(std::size(zones))]);
            Files next = files;
            for (int change = below(5); change > 0; --change)
                if (auto& file = next[std::to_string(below(20))]; file == 0 || below(2) == 0)
                    file = 1 + below(100);
                else
                    next.erase(std::to_string(below(20)));
            const std::string day = travels.calendar.day(travels.now).text();
            if (i > 0) {
                ChangeTotals& totals = expected[day];
                for (const auto& [path, bytes] : next)
                    if (const auto before = files.contains(path) ? files[path] : 0; before != bytes)
                        totals.add(bytes - before, 1);
                for (const auto& [path, bytes] : files)
                    if (!next.contains(path)) totals.add(-bytes, 1);
            }
            files = next;
            tracked[day] = travels.check("home", files).trackedBytes;
        }

        std::vector<std::string> days;
        for (const auto& [day, totals] : expected)
            if (totals.count > 0)
                days.push_back(fmt::format("{}|{}|{}|{}", day, totals.added, totals.freed, totals.count));
        EXPECT_THAT(travels.rows("SELECT local_day, added, freed, count FROM daily_totals ORDER BY 1"),
                    ElementsAreArray(days));
        EXPECT_THAT(travels.rows("SELECT local_day, SUM(MAX(delta, 0)), -SUM(MIN(delta, 0)), COUNT(*) FROM "
                                 "observations GROUP BY 1 ORDER BY 1"),
                    ElementsAreArray(days));
        std::vector<std::string> sizes;
        for (const auto& [day, bytes] : tracked) sizes.push_back(fmt::format("{}|{}", day, bytes));
        EXPECT_THAT(travels.rows("SELECT local_day, bytes FROM tracked_totals ORDER BY 1"),
                    ElementsAreArray(sizes));
    }
}

}  // namespace
}  // namespace brindle
