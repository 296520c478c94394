#include "support/TempHistory.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> observations(const TempHistory& history) {
    return history.rows(
        "SELECT folder, name, action, delta, contributor FROM observations ORDER BY scan_id, folder, name");
}

std::vector<std::string> inventory(const TempHistory& history) {
    return history.rows("SELECT rel_path, size FROM inventory ORDER BY location_id, rel_path");
}

TEST(Commit, WhatCanNotBeSeenIsNotGone) {
    const Files whole = {{"a", 1}, {"photos/2024/x", 10}, {"photos/2025/y", 20}, {"photos-old", 30}};
    const Files without = {{"a", 1}, {"photos-old", 30}};
    const Files withNew = {{"a", 1},           {"photos/2024/x", 11}, {"photos/2025/y", 20},
                           {"photos/new", 40}, {"photos-old", 30},    {"photos-new", 50}};
    for (const ScanReport& hidden :
         {ScanReport{.unreadable = {{"photos", true}}}, ScanReport{.unreadable = {{"photos", false}}},
          ScanReport{.cloudOnlyFolders = {"photos"}}}) {
        TempHistory history;
        history.include("home");
        history.check("home", whole);
        EXPECT_EQ(history.check("home", without, hidden).totals, ChangeTotals{});
        EXPECT_EQ(inventory(history).size(), whole.size());
        EXPECT_EQ(history.record("home").trackedBytes, 61);
        // Readable again: what is new below it was hidden, what had another size changed, and "photos-new" is
        // beside it, not below.
        history.check("home", withNew);
        EXPECT_THAT(observations(history),
                    ElementsAre("|photos-new|added|50|", "photos/2024|x|grew|1|photos/2024"));
        // From then on news below it is news.
        history.check("home", whole);
        EXPECT_EQ(history.rows("SELECT COUNT(*) FROM observations WHERE action = 'removed'"),
                  (std::vector<std::string>{"2"}));
    }
}

TEST(Commit, AWalkThatFailsOrIsStoppedLeavesTheHistoryAsItWas) {
    TempHistory history;
    history.include("home");
    history.check("home", {{"a", 1}});
    const auto before = history.everything();
    Files many;
    for (int i = 0; i < 4'500; ++i) many[std::to_string(i)] = i;

    const auto failing = [&](auto error) {
        return history.store().commit(
            history.request("home", [&, error](const EntrySink& sink) -> ScanReport {
                scriptedWalk(many)(sink);
                throw error;
            }));
    };
    EXPECT_THROW(failing(ScanError(ScanError::Reason::missing)).get(), ScanError);
    EXPECT_THROW(failing(Cancelled()).get(), Cancelled);

    // Stopped after the walk's last look at the flag.
    auto flag = std::make_shared<CancellationFlag>();
    CheckRequest stopped = history.request("home", [&](const EntrySink& sink) {
        ScanReport report = scriptedWalk(many)(sink);
        flag->set();
        return report;
    });
    stopped.cancellation = flag;
    EXPECT_THROW(history.store().commit(stopped).get(), Cancelled);

    EXPECT_EQ(history.everything(), before);
    EXPECT_EQ(history.check("home", {{"a", 2}}).totals, (ChangeTotals{1, 0, 1}));  // nothing staged was left
}

TEST(Commit, ACheckOverMidnightBelongsToTheDayOnWhichItEndedAndItsSampleToItsOwn) {
    TempHistory history;
    history.include("home");
    history.check("home", {{"file", 1}});
    UnixTime clock = history.now;
    bool walked = false;
    CheckRequest request = history.request("home", [&](const EntrySink& sink) {
        walked = true;
        clock += 3600 * 12;
        return scriptedWalk({{"file", 11}})(sink);
    });
    request.now = [&] { return clock; };
    request.readVolume = [&]() -> std::optional<VolumeReading> {
        EXPECT_TRUE(walked);
        return VolumeReading{.id = "v",
                             .name = "Disk",
                             .mountPath = "/mnt",
                             .totalBytes = 100,
                             .freeBytes = 40,
                             .availableBytes = 45,
                             .volumeUsedBytes = 60,
                             .isInternal = true,
                             .readAt = clock - 1};
    };
    history.store().commit(request).get();
    EXPECT_THAT(history.rows("SELECT started_at, finished_at, local_day FROM scan_runs WHERE id = 2"),
                ElementsAre("1772884800.0|1772928000.0|2026-03-08"));
    EXPECT_THAT(history.rows("SELECT local_day, added FROM daily_totals"), ElementsAre("2026-03-08|10"));
    EXPECT_THAT(history.rows("SELECT local_day, bytes FROM tracked_totals"),
                ElementsAre("2026-03-07|1", "2026-03-08|11"));
    EXPECT_THAT(history.rows("SELECT * FROM capacity_samples"),
                ElementsAre("v|Disk|/mnt|1|1772927999.0|2026-03-07|100|40|45|60|NULL"));
}

/// A walk during whose first run another program does something to the history.
Walk interruptedWalk(const TempHistory& history, const char* sql, int& walks, const Files& files) {
    return [&history, sql, &walks, files](const EntrySink& sink) {
        if (++walks == 1) static_cast<void>(history.rows(sql));
        return scriptedWalk(files)(sink);
    };
}

TEST(Commit, StartsOverWhenAnotherProgramCommittedMeanwhile) {
    TempHistory history;
    history.include("home");
    history.check("home", {{"a", 1}, {"b", 2}});
    history.now += 60;
    int walks = 0;
    const auto walk =
        interruptedWalk(history,
                        "BEGIN;"
                        "INSERT INTO scan_runs SELECT NULL, location_id, 1, 1, local_day, 'check', partial, "
                        "files_seen, tracked_bytes, unreadable_folders, cloud_only_bytes, allocated_bytes, "
                        "trash_bytes FROM scan_runs;"
                        "UPDATE inventory SET size = 5 WHERE rel_path = 'a';"
                        "COMMIT",
                        walks, {{"a", 7}, {"b", 2}});
    EXPECT_EQ(history.store().commit(history.request("home", walk)).get().totals, (ChangeTotals{2, 0, 1}));
    EXPECT_EQ(walks, 2);
    EXPECT_THAT(inventory(history), ElementsAre("a|7", "b|2"));
    EXPECT_EQ(history.record("home").trackedBytes, 9);
}

TEST(Commit, ALocationThatWasRemovedMeanwhileIsNotRevived) {
    for (const char* end : {"UPDATE locations SET removed_at = 1", "DELETE FROM locations"}) {
        TempHistory history;
        history.include("home");
        history.check("home", {{"a", 1}});
        int walks = 0;
        const auto walk = interruptedWalk(history, end, walks, {{"a", 2}});
        const CheckRequest request = history.request("home", walk);
        EXPECT_THROW(history.store().commit(request).get(), LocationGone);  // gone while it is walked
        const auto before = history.everything();
        EXPECT_THROW(history.store().commit(request).get(), LocationGone);  // gone before
        EXPECT_EQ(walks, 1);
        EXPECT_EQ(history.everything(), before);
        EXPECT_THAT(observations(history), IsEmpty());
    }
}

TEST(Commit, LetsOthersComputeFirstWhileItWalks) {
    const auto ownPriority = [] { return getpriority(PRIO_PROCESS, 0); };
    const int before = ownPriority();
    TempHistory history;
    history.include("home");
    int during = before;
    const Walk walk = [&](const EntrySink&) {
        during = ownPriority();
        return ScanReport{};
    };
    history.store().commit(history.request("home", walk)).get();
    EXPECT_EQ(during, std::max(before, 10));
    EXPECT_EQ(ownPriority(), before);
}

}  // namespace
}  // namespace brindle
