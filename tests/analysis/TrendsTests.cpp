#include "analysis/Trends.h"
#include "support/Rounds.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Calendar berlin("en_US", "Europe/Berlin");
const LocalDay today{2026, 4, 20};  // the clocks changed on 29 March

LocalDay ago(int days) {
    return berlin.addingDays(today, -days);
}

/// One location "a" that is tracked, checked and grows by 10 on each of the last `days` days.
HistorySnapshot growing(int days) {
    HistorySnapshot snapshot{.today = today, .locations = {{.id = {"a"}, .name = "Ann"}}};
    snapshot.locations.front().trackingStart = ago(days - 1);
    for (int i = days - 1; i >= 0; --i) {
        snapshot.checkedDays[{"a"}].insert(ago(i));
        snapshot.dayTotals[{"a"}][ago(i)] = {15, 5, 2};
        snapshot.trackedTotals[{"a"}][ago(i)] = 1000 - 10 * i;
    }
    return snapshot;
}

const NoComparison& noComparison(const Trend& trend) {
    static const NoComparison none{DayGap::future, "(there is a comparison)"};
    const auto* found = std::get_if<NoComparison>(&trend.before);
    return found != nullptr ? *found : none;
}

TEST(Trends, ADayWithoutACheckIsAGapAndTheSizeIsCarriedOverIt) {
    HistorySnapshot snapshot = growing(20);
    for (const int day : {1, 2}) {
        snapshot.checkedDays[{"a"}].erase(ago(day));
        snapshot.trackedTotals[{"a"}].erase(ago(day));
    }
    snapshot.estimates[{"a"}][ago(2)] = {70, 7};
    snapshot.partialDays[{"a"}].insert(ago(3));

    const Trend week = trend(snapshot, {}, today, TrendRange::week, berlin);
    ASSERT_EQ(week.days.size(), 7U);
    EXPECT_EQ(week.days[4].figures, (DayFigures{ago(2), DayEstimated{{70, 7}}}));
    EXPECT_EQ(week.days[5].figures, (DayFigures{ago(1), DayWithoutCheck{}, DayGap::noCheck}));
    EXPECT_EQ(week.days[5].trackedBytes, 970);
    EXPECT_EQ(week.figures.totals, (ChangeTotals{75, 25, 10}));
    EXPECT_EQ(week.figures.estimated, (EstimateTotals{70, 7}));
    EXPECT_EQ(week.figures.trackedBefore, 930);
    EXPECT_EQ(week.figures.trackedAtEnd, 1000);
    EXPECT_EQ(coverageText(week.figures.days),
              "5 of 7 days recorded, 1 partial, 1 estimated, 1 without a check");
    ASSERT_TRUE(std::holds_alternative<RangeFigures>(week.before));
    EXPECT_EQ(std::get<RangeFigures>(week.before).totals, (ChangeTotals{105, 35, 14}));
    EXPECT_EQ(std::get<RangeFigures>(week.before).last, ago(7));
}

TEST(Trends, TheRangeBeforeIsComparedOnlyWhereItIsKnown) {
    const auto quarter = trend(growing(400), {}, today, TrendRange::quarter, berlin);
    EXPECT_EQ(quarter.figures.days.recorded, 90);
    EXPECT_EQ(
        noComparison(quarter),
        (NoComparison{DayGap::notKept, "There is nothing to compare with: history is kept for 90 days."}));
    const auto before = [](const HistorySnapshot& snapshot, const LocalDay& last) {
        return noComparison(trend(snapshot, {}, last, TrendRange::month, berlin)).reason;
    };
    constexpr DayGap compared = DayGap::future;
    EXPECT_EQ(before(growing(400), today), compared);
    EXPECT_EQ(before(growing(400), ago(30)), compared);
    EXPECT_EQ(before(growing(400), ago(31)), DayGap::notKept);
    EXPECT_EQ(before(growing(60), today), compared);
    HistorySnapshot tooShort = growing(59);
    tooShort.estimates[{"a"}][ago(59)] = {70, 7};
    EXPECT_EQ(before(tooShort, today), DayGap::notTracked);
    EXPECT_EQ(before({.today = today, .locations = {{.id = {"a"}}}}, today), DayGap::notTracked);
    HistorySnapshot interrupted = growing(20);  // another location was tracked long before
    interrupted.locations.push_back({.id = {"b"}, .trackingStart = ago(80), .trackingEnd = ago(70)});
    EXPECT_EQ(before(interrupted, today), DayGap::notTracked);
    HistorySnapshot unseen = growing(60);
    for (int i = 30; i < 60; ++i) unseen.checkedDays[{"a"}].erase(ago(i));
    EXPECT_EQ(before(unseen, today), DayGap::noCheck);

    const auto later = noComparison(trend(growing(59), {}, today, TrendRange::month, berlin)).sentence;
    EXPECT_EQ(later,
              "There is nothing to compare with: tracking began on " + berlin.mediumLabel(ago(58)) + ".");
}

TEST(Trends, NothingIsZeroForWantOfARecord) {
    HistorySnapshot snapshot = growing(3);
    snapshot.today = berlin.addingDays(today, 20);  // and not checked since
    const Trend week = trend(snapshot, {}, snapshot.today, TrendRange::week, berlin);
    EXPECT_EQ(week.figures.totals, std::nullopt);
    EXPECT_EQ(week.figures.estimated, std::nullopt);
    EXPECT_EQ(week.figures.trackedAtEnd, 1000);
    const Trend early = trend(growing(3), {}, today, TrendRange::week, berlin);
    EXPECT_EQ(early.figures.trackedBefore, std::nullopt);
    EXPECT_EQ(early.days[3].trackedBytes, std::nullopt);
    EXPECT_EQ(early.days[3].figures.gap, DayGap::notTracked);
    EXPECT_EQ(early.days[4].trackedBytes, 980);
    EXPECT_THAT(early.steps, IsEmpty());  // where the line begins
    const Trend ahead = trend(growing(3), {}, ago(-7), TrendRange::week, berlin);
    EXPECT_EQ(ahead.figures.days, (DayCounts{.future = 7}));
    EXPECT_EQ(ahead.figures.trackedAtEnd, std::nullopt);
}

TEST(Trends, DaysThatAreNoLongerKeptAreNeitherZeroNorUnchecked) {
    HistorySnapshot snapshot = growing(100);
    snapshot.trackedTotals[{"a"}] = {{ago(95), 40}, {ago(80), 60}};  // the last before, and one since
    for (int i = 90; i < 100; ++i) snapshot.checkedDays[{"a"}].erase(ago(i));
    const Trend week = trend(snapshot, {}, ago(87), TrendRange::week, berlin);
    EXPECT_EQ(week.figures.days, (DayCounts{.recorded = 3, .notKept = 4}));
    EXPECT_EQ(week.figures.totals, (ChangeTotals{45, 15, 6}));
    EXPECT_EQ(week.days[2].trackedBytes, std::nullopt);  // another location's size may be gone
    EXPECT_EQ(week.days[3].trackedBytes, 40);            // carried into the first kept day
    EXPECT_EQ(week.figures.trackedAtEnd, 40);
    EXPECT_THAT(sentence(*week.days[0].figures.gap, snapshot), HasSubstr("90 days"));
}

TEST(Trends, ALocationThatJoinsOrLeavesMakesAStepThatIsNoChange) {
    HistorySnapshot snapshot = growing(30);
    snapshot.locations.push_back({.id = {"b"}, .name = "Bob", .trackingStart = ago(4)});
    snapshot.trackedTotals[{"b"}][ago(4)] = 500;
    snapshot.locations.push_back(
        {.id = {"c"}, .name = "C\n", .trackingStart = ago(29), .trackingEnd = ago(3)});
    snapshot.trackedTotals[{"c"}][ago(29)] = 7;
    const Trend week = trend(snapshot, {}, today, TrendRange::week, berlin);
    EXPECT_THAT(week.steps, ElementsAre(ScopeStep{ago(4), {"b"}, 500}, ScopeStep{ago(2), {"c"}, -7}));
    EXPECT_EQ(week.days[1].trackedBytes, 957);
    EXPECT_EQ(week.days[2].trackedBytes, 1467);
    EXPECT_EQ(week.days[3].trackedBytes, 1477);
    EXPECT_EQ(week.days[4].trackedBytes, 1480);
    EXPECT_EQ(week.figures.totals, (ChangeTotals{105, 35, 14}));
    EXPECT_EQ(sentence(week.steps[1], snapshot, berlin),
              "“C\\n” (7 bytes) isn't counted any more from " + berlin.mediumLabel(ago(2)) + " on.");
    EXPECT_EQ(comparisonNote(week, snapshot), "Not tracked on all of the days compared: “Bob”, “C\\n”.");
    EXPECT_EQ(comparisonNote(trend(snapshot, {LocationID{"a"}}, today, TrendRange::week, berlin), snapshot),
              "");
}

HistorySnapshot randomSnapshot(std::mt19937_64& random) {
    const auto below = [&random](int end) { return std::uniform_int_distribution(0, end - 1)(random); };
    HistorySnapshot snapshot{.today = today, .retentionDays = below(2) == 0 ? 90 : 20};
    for (const char* name : {"a", "b", "c"}) {
        TrackedLocation location{.id = {name}, .name = name};
        if (below(8) > 0) location.trackingStart = ago(below(120));
        if (below(4) == 0) location.trackingEnd = ago(below(60));
        snapshot.locations.push_back(location);
        for (int i = snapshot.retentionDays - 1; i >= -2; --i) {
            if (below(3) > 0) snapshot.checkedDays[location.id].insert(ago(i));
            if (below(6) == 0) snapshot.partialDays[location.id].insert(ago(i));
            if (below(3) > 0) snapshot.dayTotals[location.id][ago(i)] = {below(90), below(90), below(9)};
            if (below(2) == 0) snapshot.estimates[location.id][ago(i)] = {below(90), below(3)};
            if (below(3) > 0) snapshot.trackedTotals[location.id][ago(i)] = below(900);
        }
        if (below(2) == 0) snapshot.trackedTotals[location.id][ago(100)] = below(900);
    }
    return snapshot;
}

/// The size of a day, by going back day after day.
std::optional<std::int64_t> recountedSize(const HistorySnapshot& snapshot, const LocationScope& scope,
                                          int back) {
    if (back < 0 || back > snapshot.retentionDays) return {};
    std::optional<std::int64_t> sum;
    for (const TrackedLocation& location : snapshot.locations) {
        if (!scope.holds(location.id) || !location.trackingStart) continue;
        if (location.trackingEnd && *location.trackingEnd < ago(back)) continue;
        for (int i = back; i <= 200; ++i) {
            const auto& sizes = snapshot.trackedTotals.at(location.id);
            if (!sizes.contains(ago(i))) continue;
            sum = sum.value_or(0) + sizes.at(ago(i));
            break;
        }
    }
    return sum;
}

TEST(Trends, AgreeWithARecountOfRandomHistories) {
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int round = 0; round < testRounds(60); ++round) {
        const HistorySnapshot snapshot = randomSnapshot(random);
        const LocationScope scope = random() % 2 == 0 ? LocationScope{} : LocationScope{LocationID{"b"}};
        const auto range =
            std::array{TrendRange::week, TrendRange::month, TrendRange::quarter}.at(random() % 3);
        const int length = dayCount(range);
        const int end = static_cast<int>(random() % 40) - 2;
        const Trend found = trend(snapshot, scope, ago(end), range, berlin);

        DayCounts counts;
        ChangeTotals totals;
        EstimateTotals estimated;
        ASSERT_EQ(static_cast<int>(found.days.size()), length);
        for (int i = 0; i < length; ++i) {
            const int back = end + length - 1 - i;
            const TrendDay& day = found.days.at(static_cast<std::size_t>(i));
            ASSERT_EQ(day.figures.day, ago(back));
            ASSERT_EQ(day.trackedBytes, recountedSize(snapshot, scope, back)) << back;
            counts.add(day.figures);
            const DayState state = dayState(snapshot, ago(back), scope);
            ASSERT_EQ(day.figures.state, state);
            if (const auto* recorded = std::get_if<DayRecorded>(&state)) totals += recorded->totals;
            if (const auto* guessed = std::get_if<DayEstimated>(&state)) estimated += guessed->totals;
        }
        EXPECT_EQ(found.figures.days, counts);
        EXPECT_EQ(counts.all(), length);
        EXPECT_EQ(found.figures.totals.has_value(), counts.recorded > 0);
        EXPECT_EQ(found.figures.totals.value_or(ChangeTotals{}), totals);
        EXPECT_EQ(found.figures.estimated.value_or(EstimateTotals{}), estimated);
        EXPECT_EQ(found.figures.trackedBefore, recountedSize(snapshot, scope, end + length));
        EXPECT_EQ(found.figures.trackedAtEnd, recountedSize(snapshot, scope, std::max(end, 0)));
        if (const auto* before = std::get_if<RangeFigures>(&found.before)) {
            EXPECT_EQ(*before, trend(snapshot, scope, ago(end + length), range, berlin).figures);
            EXPECT_EQ(before->days.notKept, 0);
            EXPECT_GT(before->days.recorded, 0);
        }
    }
}

}  // namespace
}  // namespace brindle
