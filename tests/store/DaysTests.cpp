#include "model/DayState.h"
#include "support/TempHistory.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

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

}  // namespace
}  // namespace brindle
