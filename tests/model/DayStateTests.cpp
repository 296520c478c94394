#include "model/DayState.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr LocalDay before{2026, 3, 4};
constexpr LocalDay start{2026, 3, 5};
constexpr LocalDay middle{2026, 3, 6};
constexpr LocalDay today{2026, 3, 7};
constexpr LocalDay tomorrow{2026, 3, 8};
const LocationScope all;

class DayStates : public testing::Test {
protected:
    void SetUp() override {
        snapshot.today = today;
        snapshot.locations = {
            {.id = {"old"}, .lastCheck = 10, .trackingStart = before, .trackingEnd = middle},
            {.id = {"home"}, .lastCheck = 20, .trackingStart = start},
            {.id = {"new"}}};
    }

    void check(const char* location, const LocalDay& day, std::optional<ChangeTotals> totals = {}) {
        snapshot.checkedDays[{location}].insert(day);
        if (totals) snapshot.dayTotals[{location}][day] = *totals;
    }

    [[nodiscard]] DayState state(const LocalDay& day, const LocationScope& scope = all) const {
        return dayState(snapshot, day, scope);
    }

    HistorySnapshot snapshot;
};

TEST_F(DayStates, ADayIsRecordedByTheLocationsThatWereTrackedOnIt) {
    check("old", before, ChangeTotals{1, 2, 3});
    check("home", before, ChangeTotals{100, 0, 1});  // before it was tracked
    check("new", before, ChangeTotals{100, 0, 1});   // has no baseline
    EXPECT_EQ(state(before), DayState(DayRecorded{{1, 2, 3}, false}));

    check("home", middle);                                      // a check that found nothing
    EXPECT_EQ(state(middle), DayState(DayRecorded{{}, true}));  // and the other had none
    EXPECT_EQ(state(middle, {LocationID{"home"}}), DayState(DayRecorded{{}, false}));
    EXPECT_EQ(state(middle, {LocationID{"old"}}), DayState(DayWithoutCheck{}));
    check("old", middle, ChangeTotals{1, 0, 1});  // its last day
    EXPECT_EQ(state(middle), DayState(DayRecorded{{1, 0, 1}, false}));
    snapshot.partialDays[{"home"}].insert(middle);
    EXPECT_EQ(state(middle), DayState(DayRecorded{{1, 0, 1}, true}));

    check("old", today, ChangeTotals{100, 0, 1});  // after it was removed
    EXPECT_EQ(state(today), DayState(DayWithoutCheck{}));
}

TEST_F(DayStates, EstimatesSpeakOnlyWhereNoCheckDoes) {
    snapshot.estimates[{"home"}] = {{before, {10, 2}}, {start, {10, 2}}, {tomorrow, {10, 2}}};
    snapshot.estimates[{"old"}] = {{before, {5, 1}}, {middle, {5, 0}}};
    EXPECT_EQ(state(before), DayState(DayEstimated{{15, 3}}));  // tracked on the day or not
    EXPECT_EQ(state(before, {LocationID{"old"}}), DayState(DayEstimated{{5, 1}}));
    EXPECT_EQ(state(middle), DayState(DayWithoutCheck{}));  // bytes without files
    EXPECT_EQ(state(tomorrow), DayState(DayFuture{}));
    check("old", start);
    EXPECT_EQ(state(start), DayState(DayRecorded{{}, true}));
}

TEST_F(DayStates, WhatASnapshotTellsOfItsLocations) {
    snapshot.checkedDays[{"forgotten"}].insert(today);
    EXPECT_FALSE(snapshot.hasAnyCheck());
    check("old", before);
    EXPECT_TRUE(snapshot.hasAnyCheck());
    EXPECT_EQ(snapshot.currentlyTracked().size(), 2U);
    EXPECT_EQ(snapshot.latestCheck(all), 20);
    EXPECT_EQ(snapshot.latestCheck({LocationID{"old"}}), 10);
    EXPECT_EQ(snapshot.latestCheck({LocationID{"new"}}), std::nullopt);
}

}  // namespace
}  // namespace brindle
