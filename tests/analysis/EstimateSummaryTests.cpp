#include "analysis/EstimateSummary.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(EstimateSummary, SumsTheEstimatesOfTheScopeAndNamesTheirDays) {
    const Calendar calendar("en_US", "UTC");
    HistorySnapshot snapshot{.today = {2026, 4, 20}, .locations = {{.id = {"a"}}, {.id = {"b"}}}};
    EXPECT_EQ(estimateSummary(snapshot, {}), std::nullopt);
    snapshot.estimates[{"a"}][{2026, 3, 7}] = {1'000, 1};
    snapshot.estimates[{"b"}][{2026, 3, 9}] = {5'000, 1'240};
    snapshot.estimates[{"b"}][{2026, 3, 1}] = {9'000, 0};   // no files
    snapshot.estimates[{"c"}][{2026, 3, 2}] = {9'000, 10};  // of no location
    // An estimate is also one where another location was checked already.
    snapshot.locations.front().trackingStart = LocalDay{2026, 3, 8};
    snapshot.checkedDays[{"a"}].insert({2026, 3, 9});

    const auto all = estimateSummary(snapshot, {});
    EXPECT_EQ(all, (EstimateSummary{{6'000, 1'241}, {2026, 3, 7}, {2026, 3, 9}}));
    EXPECT_EQ(
        sentence(*all, calendar),
        "Estimated from file dates: 6.0 kB came from Saturday, March 7 to Monday, March 9, in 1,241 files.");
    const auto one = estimateSummary(snapshot, {LocationID{"a"}});
    EXPECT_EQ(sentence(*one, calendar),
              "Estimated from file dates: 1.0 kB came on Saturday, March 7, in 1 file.");
}

}  // namespace
}  // namespace brindle
