#include "model/DayState.h"
#include "support/TempHistory.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace brindle {
namespace {

using testing::ElementsAreArray;

constexpr UnixTime hour = 3600;

// A day is found by the name that it had where it was checked, wherever it is looked at.
TEST(Days, ADayWithACheckIsTrackedOnEitherSideOfTheDateLine) {
    TempHistory history;
    history.include("home");
    const auto goTo = [&](const char* zone) { history.calendar = Calendar("en_US", zone); };
    std::int64_t size = 0;
    const auto check = [&](const LocalDay& day, double hourOfDay) {
        history.now = history.calendar.time(day) + hourOfDay * hour;
        history.check("home", {{"file", ++size}});
    };
    const auto added = [&](const LocalDay& today, const LocalDay& day) -> std::optional<std::int64_t> {
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

// Somebody who travels, and whose clock is wrong at times. Whatever the days, every difference between one
// check and the next is counted on exactly one of them.
TEST(Days, NoChangeIsLostOrCountedTwiceWhereverAndWheneverChecksAre) {
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
