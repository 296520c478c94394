#include "example/ExampleHistory.h"
#include "example/Habits.h"
#include "model/DayState.h"
#include "model/Packages.h"
#include "model/Retention.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <tuple>

namespace brindle {
namespace {

constexpr LocalDay longAgo{.year = 1, .month = 1, .day = 1};
constexpr LocalDay farAhead{.year = 9999, .month = 12, .day = 31};
constexpr std::int64_t GB = 1'000'000'000;

LocationScope only(const char* id) {
    return {LocationID{id}};
}
const LocationScope scopes[] = {{}, only("example.home"), only("example.studio-ssd"), only("another")};

struct Moment {
    const char* name;
    const char* zone;
    LocalDay today;
    int hour;
    std::uint64_t seed = ExampleHistory::usualSeed;
};

class Example : public testing::TestWithParam<Moment> {
protected:
    [[nodiscard]] std::vector<FileChange> changes(const LocationScope& scope = {}) {
        return history.periodChanges(longAgo, farAhead, scope).get();
    }

    Calendar calendar{"en_US", GetParam().zone};
    LocalDay today = GetParam().today;
    UnixTime now = calendar.time(today, GetParam().hour) + 30;
    ExampleHistory history{calendar, now, GetParam().seed};
    HistorySnapshot snapshot = history.snapshot().get();
    std::vector<LocalDay> days = calendar.days(firstKeptDay(calendar, today), today);
};

// Around changes of the clocks, one of them at midnight, and where months and years end.
INSTANTIATE_TEST_SUITE_P(
    Moments, Example,
    testing::Values(Moment{"Usual", "Europe/Berlin", {2026, 11, 20}, 21},
                    Moment{"Morning", "Europe/Berlin", {2026, 11, 20}, 9},
                    Moment{"BeforeTheFirstCheck", "UTC", {2026, 7, 1}, 0},
                    Moment{"NewYear", "America/New_York", {2026, 1, 1}, 18},
                    Moment{"LeapDay", "Asia/Kathmandu", {2028, 2, 29}, 12},
                    Moment{"SpringForward", "Europe/Berlin", {2026, 3, 29}, 23},
                    Moment{"FallBack", "Australia/Lord_Howe", {2026, 4, 5}, 20},
                    Moment{"TwoMidnights", "America/Havana", {2026, 11, 1}, 23},
                    Moment{"NoMidnight", "America/Santiago", {2026, 9, 6}, 23},
                    Moment{"ComputerOff", "Europe/Berlin", {2026, 11, 15}, 20},
                    Moment{"SeedZero", "Europe/Berlin", {2026, 6, 30}, 22, 0},
                    Moment{"LargestSeed", "Pacific/Auckland", {2027, 10, 3}, 15, ~std::uint64_t{0}}),
    [](const auto& moment) { return std::string(moment.param.name); });

TEST_P(Example, ChangesLieInOrderInTheDaysThatWereChecked) {
    std::set<std::int64_t> ids;
    std::tuple<LocalDay, UnixTime, std::int64_t> before;
    for (const FileChange& change : changes()) {
        const std::tuple place(change.day, change.observedAt, change.id);
        ASSERT_LT(before, place);
        before = place;
        ASSERT_TRUE(ids.insert(change.id).second);
        ASSERT_LE(change.observedAt, now);
        ASSERT_EQ(calendar.day(change.observedAt), change.day);
        ASSERT_TRUE(snapshot.checkedDays[change.locationID].contains(change.day));
        ASSERT_EQ(change.source, ChangeSource::measured);
        const bool isMore = change.action == ChangeAction::added || change.action == ChangeAction::grew;
        ASSERT_TRUE(isMore ? change.byteDelta > 0 : change.byteDelta < 0) << change.name;
        ASSERT_EQ(change.name.empty(), change.fileCount > 1);
    }
    for (const FileChange& estimate : history.allEstimates({}).get())
        ASSERT_TRUE(ids.insert(estimate.id).second);
    for (const TrackedLocation& location : snapshot.locations) {
        EXPECT_LE(location.lastCheck, now);
        EXPECT_EQ(calendar.day(*location.lastCheck), today);
        for (const LocalDay& day : snapshot.checkedDays[location.id])
            EXPECT_TRUE(isTracked(location, day) && day <= today) << day.text();
    }
}

// Whatever is told of one file fits together: it grows, shrinks and goes only when it is there, with its
// size.
TEST_P(Example, NoFileGoesThatWasNotThere) {
    std::map<std::pair<FolderRef, std::string>, std::optional<std::int64_t>> sizes;  // absent: it is gone
    for (const FileChange& estimate : history.allEstimates({}).get())
        if (!estimate.name.empty())
            sizes[{{estimate.locationID, estimate.folder}, estimate.name}] = estimate.byteDelta;
    for (const FileChange& change : changes()) {
        if (change.name.empty()) continue;
        SCOPED_TRACE(change.day.text() + " " + change.name);
        const auto [found, isNew] = sizes.insert({{{change.locationID, change.folder}, change.name}, {}});
        auto& size = found->second;
        if (change.action == ChangeAction::added) {
            ASSERT_FALSE(size);
            size = change.byteDelta;
        } else if (isNew) {
            if (change.action != ChangeAction::removed) sizes.erase(found);  // its size is not known yet
        } else {
            ASSERT_TRUE(size);
            *size += change.byteDelta;
            ASSERT_GE(*size, 0);
            ASSERT_EQ(*size == 0, change.action == ChangeAction::removed);
            if (change.action == ChangeAction::removed) size.reset();
        }
    }
}

TEST_P(Example, TheSnapshotIsTheSumOfTheChanges) {
    EXPECT_TRUE(snapshot.isExample);
    EXPECT_EQ(snapshot.today, today);
    decltype(snapshot.dayTotals) totals;
    for (const FileChange& change : changes()) totals[change.locationID][change.day].add(change);
    EXPECT_EQ(snapshot.dayTotals, totals);
    decltype(snapshot.estimates) estimates;
    for (const FileChange& estimate : history.allEstimates({}).get())
        estimates[estimate.locationID][estimate.day] += {estimate.byteDelta, estimate.fileCount};
    EXPECT_EQ(snapshot.estimates, estimates);

    for (const TrackedLocation& location : snapshot.locations) {
        const auto& tracked = snapshot.trackedTotals[location.id];
        EXPECT_EQ(tracked.begin()->first, location.trackingStart);
        EXPECT_EQ(tracked.rbegin()->second, location.trackedBytes);
        EXPECT_EQ(tracked.size(), snapshot.checkedDays[location.id].size());
        for (auto day = tracked.begin(), next = std::next(day); next != tracked.end(); ++day, ++next)
            EXPECT_EQ(next->second - day->second, totals[location.id][next->first].net());
    }
    const auto& records = history.locationRecords();
    ASSERT_EQ(records.size(), snapshot.locations.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(records[i].id, snapshot.locations[i].id);
        EXPECT_EQ(records[i].trackedBytes, snapshot.locations[i].trackedBytes);
        EXPECT_EQ(calendar.day(*records[i].baselineAt), snapshot.locations[i].trackingStart);
    }
}

TEST_P(Example, EveryOperationTellsTheSame) {
    const LocalDay first = calendar.addingDays(today, -88);
    const LocalDay last = calendar.addingDays(today, -1);
    for (const LocationScope& scope : scopes) {
        const auto all = changes(scope);
        std::vector<FileChange> inPeriod;
        std::vector<FileChange> byDay;
        std::ranges::copy_if(all, std::back_inserter(inPeriod), [&](const FileChange& change) {
            return scope.holds(change.locationID) && first <= change.day && change.day <= last;
        });
        for (const LocalDay& day : calendar.days(first, last))
            std::ranges::move(history.dayChanges(day, scope).get(), std::back_inserter(byDay));
        EXPECT_TRUE(history.periodChanges(first, last, scope).get() == inPeriod);
        EXPECT_TRUE(byDay == inPeriod);
        EXPECT_EQ(history.periodContributors(first, last, scope, 5).get(),
                  largestFirst(groupedByFolder(inPeriod, contributorDepth), 5));

        std::vector<FileChange> streamed;
        const auto keep = [&streamed](const FileChange& change) { streamed.push_back(change); };
        history.streamChanges(first, last, scope, ChangeSource::measured, keep);
        EXPECT_TRUE(streamed == inPeriod);
        streamed.clear();
        history.streamChanges(first, farAhead, scope, ChangeSource::estimated, keep);
        EXPECT_TRUE(streamed == history.periodEstimates(first, farAhead, scope).get());
        EXPECT_TRUE(history.periodEstimates(longAgo, farAhead, scope).get() ==
                    history.allEstimates(scope).get());
    }
    EXPECT_THAT(history.periodChanges(last, first, {}).get(), testing::IsEmpty());
}

TEST_P(Example, EstimatesLieBeforeTheFirstCheck) {
    for (const TrackedLocation& location : snapshot.locations) {
        const auto estimates = history.allEstimates({location.id}).get();
        EXPECT_THAT(estimates, testing::Not(testing::IsEmpty()));
        for (const FileChange& estimate : estimates) {
            EXPECT_GE(estimate.day, days.front());
            EXPECT_LT(estimate.day, location.trackingStart);
            EXPECT_EQ(estimate.source, ChangeSource::estimated);
            EXPECT_GT(estimate.byteDelta, 0);
        }
    }
}

TEST_P(Example, DrivesMoveWithWhatLiesOnThem) {
    ASSERT_EQ(snapshot.volumes.size(), 2U);
    for (const VolumeReading& drive : snapshot.volumes) {
        const auto samples = history.capacitySamples(drive.id, longAgo, farAhead).get();
        EXPECT_EQ(samples.back(), drive);
        const auto& location = *std::ranges::find(snapshot.locations, drive.id, &TrackedLocation::volumeID);
        const auto& tracked = snapshot.trackedTotals[location.id];
        ASSERT_EQ(samples.size(), tracked.size());
        for (std::size_t i = 0; i < samples.size(); ++i) {
            EXPECT_GT(samples[i].freeBytes, 0);
            EXPECT_GE(samples[i].availableBytes, samples[i].freeBytes);
            EXPECT_LT(samples[i].availableBytes, samples[i].totalBytes);
            // The rest is the Trash, what no check sees, and the system.
            const auto used = samples[i].totalBytes - samples[i].freeBytes;
            const auto rest = used - tracked.at(calendar.day(samples[i].readAt));
            EXPECT_GT(rest, GB);
            EXPECT_LT(rest, 200 * GB);
        }
        const UsedSpaceBreakdown& parts = snapshot.breakdowns[drive.id];
        EXPECT_EQ(parts.files + parts.trash + parts.notVisible + parts.otherVolumes, parts.total);
        EXPECT_EQ(parts.total, drive.totalBytes - drive.freeBytes);
        EXPECT_GE(parts.files, location.trackedBytes);
        EXPECT_EQ(parts.snapshotCount, drive.snapshotCount);
    }
    EXPECT_THAT(history.capacitySamples("another", longAgo, farAhead).get(), testing::IsEmpty());
    EXPECT_EQ(history.capacitySamples(snapshot.volumes[0].id, today, today).get().size(), 1U);
}

// Every page has something of everything to show.
TEST_P(Example, TheDaysLookLikeALife) {
    std::map<std::string, int> states;
    for (const LocalDay& day : days) {
        const DayState state = dayState(snapshot, day, {});
        if (const auto* recorded = std::get_if<DayRecorded>(&state))
            ++states[recorded->partial ? "partial" : "recorded"];
        else
            ++states[std::holds_alternative<DayEstimated>(state) ? "estimated" : "no check"];
    }
    EXPECT_GE(states["recorded"], 50);
    EXPECT_GE(states["partial"], 2);
    EXPECT_GE(states["estimated"], 5);
    EXPECT_GE(states["no check"], 1);
    EXPECT_TRUE(std::holds_alternative<DayRecorded>(dayState(snapshot, today, {})));

    std::int64_t largestAdded = 0;
    std::int64_t largestFreed = 0;
    for (const auto& [day, totals] : snapshot.dayTotals[LocationID{"example.studio-ssd"}]) {
        largestAdded = std::max(largestAdded, totals.added);
        largestFreed = std::max(largestFreed, totals.freed);
    }
    EXPECT_GE(largestAdded, 100 * GB);
    EXPECT_GE(largestFreed, 50 * GB);

    std::set<ChangeAction> actions;
    std::set<std::string_view> unused;
    std::size_t most = 0;
    for (const Habit& habit : habits()) unused.insert(habit.name);
    EXPECT_EQ(unused.size(), 1U + 28U);  // groups have none
    for (const FileChange& change : changes()) {
        actions.insert(change.action);
        std::erase_if(unused, [&change](std::string_view name) {
            return name.substr(0, name.find('{')) == change.name.substr(0, name.find('{')) &&
                   change.name.ends_with(name.substr(name.rfind('}') + 1));
        });
    }
    for (const LocalDay& day : days) most = std::max(most, history.dayChanges(day, {}).get().size());
    EXPECT_EQ(actions.size(), 4U);
    EXPECT_THAT(unused, testing::IsEmpty());
    EXPECT_GE(most, 200U);  // more than a page
    EXPECT_LE(most, 3000U);
}

const Calendar berlin("en_US", "Europe/Berlin");

// The end of each day, and of the one after it: both tell the same of all days but those where the checks
// begin.
TEST(ExampleAcrossDays, WhatIsRecordedStays) {
    constexpr int endOfDay = 23;
    LocalDay today{2026, 10, 5};
    auto before = std::make_unique<ExampleHistory>(berlin, berlin.time(today, endOfDay));
    for (int i = 0; i < 35; ++i) {
        const LocalDay yesterday = today;
        today = berlin.addingDays(today, 1);
        SCOPED_TRACE(today.text());
        auto now = std::make_unique<ExampleHistory>(berlin, berlin.time(today, endOfDay));
        const LocalDay settled = berlin.addingDays(yesterday, -60);
        EXPECT_TRUE(before->periodChanges(settled, yesterday, {}).get() ==
                    now->periodChanges(settled, yesterday, {}).get());
        const HistorySnapshot then = before->snapshot().get();
        const HistorySnapshot after = now->snapshot().get();
        for (const auto& [location, tracked] : after.trackedTotals)
            for (const auto& [day, bytes] : tracked)
                if (day > settled && day < today) {
                    EXPECT_EQ(then.trackedTotals.at(location).at(day), bytes);
                }
        for (const VolumeReading& drive : after.volumes) {
            auto samples = now->capacitySamples(drive.id, settled, yesterday).get();
            auto samplesThen = before->capacitySamples(drive.id, settled, yesterday).get();
            // A place that is not there is looked at on the day itself only.
            if (samplesThen.size() > samples.size()) samplesThen.pop_back();
            EXPECT_EQ(samples, samplesThen);
        }
        before = std::move(now);
    }
}

TEST(ExampleAcrossDays, ADayFillsAsItGoesOn) {
    const LocalDay day{2026, 11, 18};
    std::vector<FileChange> known;
    for (int hour = 0; hour < 24; ++hour) {
        ExampleHistory history(berlin, berlin.time(day, hour));
        auto changes = history.dayChanges(day, {}).get();
        ASSERT_GE(changes.size(), known.size());
        EXPECT_TRUE(std::ranges::equal(known, std::span(changes).first(known.size())));
        known = std::move(changes);
    }
    EXPECT_GT(known.size(), 50U);
}

TEST(ExampleAcrossDays, AnotherSeedIsAnotherHistory) {
    const UnixTime now = berlin.time({2026, 11, 18}, 20);
    const auto changes = [now](std::uint64_t seed) {
        return ExampleHistory(berlin, now, seed).periodChanges(longAgo, farAhead, {}).get();
    };
    EXPECT_TRUE(changes(1) == changes(1));
    EXPECT_FALSE(changes(1) == changes(2));
}

}  // namespace
}  // namespace brindle
