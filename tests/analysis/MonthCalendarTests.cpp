#include "analysis/MonthCalendar.h"
#include "support/Rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace brindle {
namespace {

using testing::ElementsAre;

const Calendar germanCalendar("de_DE", "Europe/Berlin");
const HistorySnapshot empty{.today = {2026, 4, 20}};

/// Each week as the numbers of its days, "." where there is none.
std::vector<std::string> grid(const MonthCalendar& month) {
    std::vector<std::string> rows;
    for (const MonthWeek& week : month.weeks) {
        std::string row;
        for (const auto& cell : week) row += cell ? std::to_string(cell->figures.day.day) + " " : ". ";
        rows.push_back(row);
    }
    return rows;
}

TEST(MonthCalendar, WeeksBeginAsTheLocaleSaysAndHoldEveryDayOnce) {
    const auto month = [](const char* locale, const char* zone, const LocalDay& day) {
        return monthCalendar(empty, {}, day, Calendar(locale, zone));
    };
    // The clocks change on the 29th.
    EXPECT_THAT(grid(month("de_DE", "Europe/Berlin", {2026, 3, 29})),
                ElementsAre(". . . . . . 1 ", "2 3 4 5 6 7 8 ", "9 10 11 12 13 14 15 ",
                            "16 17 18 19 20 21 22 ", "23 24 25 26 27 28 29 ", "30 31 . . . . . "));
    EXPECT_THAT(grid(month("en_US", "America/New_York", {2026, 2, 28})),
                ElementsAre("1 2 3 4 5 6 7 ", "8 9 10 11 12 13 14 ", "15 16 17 18 19 20 21 ",
                            "22 23 24 25 26 27 28 "));
    EXPECT_THAT(grid(month("ar_EG", "Africa/Cairo", {2026, 10, 1})),
                ElementsAre(". . . . . 1 2 ", "3 4 5 6 7 8 9 ", "10 11 12 13 14 15 16 ",
                            "17 18 19 20 21 22 23 ", "24 25 26 27 28 29 30 ", "31 . . . . . . "));
    // Days that a time zone left out: within a week, and at its beginning.
    EXPECT_EQ(grid(month("de_DE", "Pacific/Apia", {2011, 12, 1})).back(), "26 27 28 29 . 31 . ");
    const auto kwajalein = grid(month("ar_EG", "Pacific/Kwajalein", {1993, 8, 1}));
    EXPECT_EQ(kwajalein.at(2), "14 15 16 17 18 19 20 ");
    EXPECT_EQ(kwajalein.at(3), ". 22 23 24 25 26 27 ");

    EXPECT_THAT(month("en_US", "UTC", {2026, 3, 7}).weekdayNames,
                ElementsAre("Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"));
    EXPECT_THAT(month("de_DE", "UTC", {2026, 3, 7}).weekdayNames,
                ElementsAre("Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"));
    EXPECT_EQ(month("ar_EG", "UTC", {2026, 3, 7}).weekdayNames.front(), "السبت");
    EXPECT_EQ(month("de_DE", "UTC", {2026, 3, 7}).title, "März 2026");
}

TEST(MonthCalendar, OnlyRecordedDaysHaveAColour) {
    HistorySnapshot snapshot = empty;
    snapshot.locations.push_back({.id = {"a"}, .trackingStart = LocalDay{2026, 4, 5}});
    snapshot.estimates[{"a"}][{2026, 4, 3}] = {10, 1};
    const auto record = [&snapshot](int day, const ChangeTotals& totals) {
        snapshot.checkedDays[{"a"}].insert({2026, 4, day});
        snapshot.dayTotals[{"a"}][{2026, 4, day}] = totals;
    };
    record(5, {0, 0, 0});
    record(6, {5, 5, 2});
    record(7, {30, 0, 1});
    record(8, {0, 2'000'000'000, 1});
    snapshot.dayTotals[{"a"}][{2026, 4, 9}] = {1, 0, 1};  // no check
    const MonthCalendar month = monthCalendar(snapshot, {}, {2026, 4, 20}, germanCalendar);
    std::map<int, std::optional<int>> steps;
    for (const MonthWeek& week : month.weeks)
        for (const auto& cell : week)
            if (cell) steps[cell->figures.day.day] = cell->step;
    EXPECT_EQ(steps.size(), 30U);
    for (const auto& [day, step] : steps) EXPECT_EQ(step.has_value(), day >= 5 && day <= 8) << day;
    EXPECT_EQ(steps[5], 0);
    EXPECT_EQ(steps[6], 0);
    EXPECT_EQ(steps[7], 1);
    EXPECT_EQ(steps[8], -3);
    EXPECT_EQ(month.figures.days,
              (DayCounts{.recorded = 4, .estimated = 1, .noCheck = 12, .notTracked = 3, .future = 10}));
    EXPECT_EQ(month.weeks[1][3]->figures.gap, DayGap::noCheck);
    // The day keeps its place on the pages of other months.
    EXPECT_EQ(monthCalendar(snapshot, {}, {2026, 3, 1}, germanCalendar).scale, month.scale);
    EXPECT_EQ(legendText(month.scale, -3), "\u22122.0 GB or more");
    EXPECT_EQ(legendText(month.scale, 1), "+30 bytes or more");
    EXPECT_EQ(legendText(month.scale, 4), "");
    EXPECT_EQ(legendText(month.scale, 0), "No net change");
}

TEST(NetScale, GivesEachStepItsShareOfDaysWhateverTheLargest) {
    const auto steps = [](const std::vector<std::int64_t>& netChanges) {
        const NetScale scale = NetScale::of(netChanges);
        std::vector<int> found;
        for (const std::int64_t net : netChanges) found.push_back(scale.step(net));
        return found;
    };
    EXPECT_THAT(steps({-7}), ElementsAre(-2));
    EXPECT_THAT(steps({0, 0}), ElementsAre(0, 0));
    EXPECT_THAT(steps({5, -5, 5}), ElementsAre(2, -2, 2));
    EXPECT_THAT(steps({3, -4, 0, 1, 2}), ElementsAre(3, -4, 0, 1, 2));
    EXPECT_THAT(steps({1, 2, 3, 1'000'000'000'000}), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(steps({1, 1, 1, 1, 1, 1, 9, 9}), ElementsAre(2, 2, 2, 2, 2, 2, 4, 4));
    EXPECT_EQ(NetScale().step(-12), -1);

    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int round = 0; round < testRounds(200); ++round) {
        std::vector<std::int64_t> nets(1 + random() % 90);
        const std::uint64_t span = std::uint64_t{1} << (2 + random() % 40);
        for (auto& net : nets)
            net = static_cast<std::int64_t>(random() % (2 * span)) - static_cast<std::int64_t>(span);
        const NetScale scale = NetScale::of(nets);
        for (const auto a : nets) {
            const auto ofA = scale.step(a);
            ASSERT_EQ(ofA > 0, a > 0);
            ASSERT_EQ(scale.step(-a), -ofA);
            for (const auto b : nets) ASSERT_TRUE(a > b || ofA <= scale.step(b)) << a << " " << b;
        }
    }
}

TEST(MonthCalendar, MovingStaysOnDaysThatExistAndAreKept) {
    const auto byMonths = [](const LocalDay& day, int count) {
        return movedByMonths(day, count, empty, germanCalendar);
    };
    EXPECT_EQ(byMonths({2026, 3, 31}, -1), (LocalDay{2026, 2, 28}));
    EXPECT_EQ(byMonths({2026, 2, 28}, 1), (LocalDay{2026, 3, 28}));
    EXPECT_EQ(byMonths({2026, 3, 29}, 1), (LocalDay{2026, 4, 20}));
    EXPECT_EQ(byMonths({2026, 2, 10}, -1), (LocalDay{2026, 1, 21}));  // the first of 90 days
    EXPECT_EQ(movedByDays({2026, 3, 28}, 2, empty, germanCalendar), (LocalDay{2026, 3, 30}));
    EXPECT_EQ(movedByDays({2026, 4, 20}, 1, empty, germanCalendar), (LocalDay{2026, 4, 20}));
    EXPECT_EQ(movedByDays({2026, 1, 22}, -7, empty, germanCalendar), (LocalDay{2026, 1, 21}));
}

}  // namespace
}  // namespace brindle
