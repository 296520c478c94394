#include "analysis/Reconcile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const Calendar calendar("en_US", "UTC");

LocalDay march(int day) {
    return {2026, 3, day};
}

VolumeReading sample(int day, int hour, std::int64_t free) {
    return {.id = "disk",
            .name = "Disk",
            .totalBytes = 100'000'000,
            .freeBytes = free,
            .availableBytes = free,
            .volumeUsedBytes = 95'000'000 - free,
            .snapshotCount = 0,
            .readAt = calendar.time(march(day), hour)};
}

HistorySnapshot history() {
    HistorySnapshot snapshot{.today = march(9)};
    snapshot.locations = {{.id = {"in"}, .volumeID = "disk", .trackingStart = march(1)},
                          {.id = {"gone"}, .volumeID = "disk", .trackingStart = march(1)},
                          {.id = {"elsewhere"}, .volumeID = "other", .trackingStart = march(1)}};
    for (int day = 1; day <= 9; ++day) {
        snapshot.dayTotals[{"in"}][march(day)] = {3'000'000, 1'000'000, 2};
        snapshot.dayTotals[{"gone"}][march(day)] = {0, 500'000, 1};
        snapshot.dayTotals[{"elsewhere"}][march(day)] = {70'000'000, 0, 1};
    }
    return snapshot;
}

TEST(Reconcile, ComparesTheStateBeforeThePeriodWithItsLastSample) {
    // The changes of a day were found after the last sample of the day before, whatever lay between them.
    const std::vector<VolumeReading> samples{sample(2, 8, 60'000'000), sample(2, 20, 58'000'000),
                                             sample(5, 9, 50'000'000), sample(6, 9, 55'000'000),
                                             sample(8, 9, 10'000'000)};
    const auto found = reconcile(history(), samples, march(4), march(7), calendar);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->from.readAt, samples[1].readAt);
    EXPECT_EQ(found->to.readAt, samples[3].readAt);
    EXPECT_EQ(found->usedMoved, 3'000'000);
    EXPECT_EQ(found->trackedMoved, 4 * 1'500'000);  // 3 to 6 March
    EXPECT_EQ(found->unexplained(), -3'000'000);
    EXPECT_EQ(found->beyondVolumeMoved, 0);
    EXPECT_EQ(found->snapshotsMoved, 0);
    EXPECT_FALSE(found->purgeableMoved);

    // Nothing from before the period: its first day is what it begins with.
    const auto later = reconcile(history(), std::span(samples).subspan(2), march(4), march(9), calendar);
    ASSERT_TRUE(later);
    EXPECT_EQ(later->usedMoved, 40'000'000);
    EXPECT_EQ(later->trackedMoved, 3 * 1'500'000);  // 6 to 8 March

    EXPECT_FALSE(reconcile(history(), samples, march(9), march(9), calendar)) << "no sample in the period";
    EXPECT_FALSE(reconcile(history(), std::span(samples).first(2), march(1), march(4), calendar))
        << "one day";
    EXPECT_FALSE(reconcile(history(), {}, march(1), march(9), calendar));
}

TEST(Reconcile, SaysOnlyWhatIsKnown) {
    auto samples = std::vector{sample(2, 8, 60'000'000), sample(5, 9, 54'000'000)};
    const auto told = [&] {
        return reconciliationSentences(reconcile(history(), samples, march(3), march(5), calendar).value(),
                                       calendar);
    };
    EXPECT_THAT(told(),
                ElementsAre(HasSubstr("Used space on “Disk” grew by 6.0 MB between Mar 2, 2026, 8:00"),
                            "Tracked changes account for +4.5 MB.",
                            "The other +1.5 MB can be files outside the included locations, the file "
                            "system's own tables or files that take more or less space than their size."));

    samples[1].volumeUsedBytes = 40'000'000;
    samples[1].snapshotCount = 3;
    samples[1].availableBytes += 2'000'000;
    samples[1].totalBytes += 500'000;
    EXPECT_THAT(
        told(),
        ElementsAre(HasSubstr("grew by 6.5 MB"), "Its capacity went from 100.0 MB to 100.5 MB.",
                    "Tracked changes account for +4.5 MB.", HasSubstr(", snapshots, "),
                    "Blocks reserved for the system moved by +1.5 MB.", "Purgeable space moved by +2.0 MB.",
                    "There are 3 more snapshots. Snapshot sizes are reported only to an administrator."));

    // What cannot be counted is possible, and its figure is not made up.
    samples[1].snapshotCount.reset();
    samples[1].volumeUsedBytes.reset();
    EXPECT_THAT(told(), Not(testing::Contains(HasSubstr("reserved"))));
    EXPECT_THAT(told(), testing::Contains(HasSubstr(", snapshots, ")));
}

}  // namespace
}  // namespace brindle
