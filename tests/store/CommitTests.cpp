#include "store/SQLiteError.h"
#include "support/TempHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>

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

struct ChangeCase {
    const char* name;
    std::optional<std::int64_t> before, after;  // absent: no such file
    std::vector<std::string> observed;
    std::vector<std::string> kept;

    friend std::ostream& operator<<(std::ostream& out, const ChangeCase& c) { return out << c.name; }
};

class ChangeOf : public testing::TestWithParam<ChangeCase> {};

TEST_P(ChangeOf, OneFileBetweenTwoChecks) {
    const ChangeCase& change = GetParam();
    const auto files = [](std::optional<std::int64_t> size) {
        return size ? Files{{"Movies/Raw/a.mov", *size}} : Files{};
    };
    TempHistory history;
    history.include("home");
    EXPECT_TRUE(history.check("home", files(change.before)).isBaseline);
    EXPECT_FALSE(history.check("home", files(change.after)).isBaseline);
    EXPECT_EQ(observations(history), change.observed);
    EXPECT_EQ(inventory(history), change.kept);
    // An observation must not come a second time.
    history.check("home", files(change.after));
    EXPECT_EQ(observations(history), change.observed);
}

INSTANTIATE_TEST_SUITE_P(
    Commit, ChangeOf,
    testing::Values(
        ChangeCase{"NewFile", {}, 10, {"Movies/Raw|a.mov|added|10|Movies/Raw"}, {"Movies/Raw/a.mov|10"}},
        ChangeCase{"NewEmptyFile", {}, 0, {}, {"Movies/Raw/a.mov|0"}},  // empty files are not news
        ChangeCase{"GrownFile", 10, 15, {"Movies/Raw|a.mov|grew|5|Movies/Raw"}, {"Movies/Raw/a.mov|15"}},
        ChangeCase{"FilledFile", 0, 15, {"Movies/Raw|a.mov|grew|15|Movies/Raw"}, {"Movies/Raw/a.mov|15"}},
        ChangeCase{"EmptiedFile", 10, 0, {"Movies/Raw|a.mov|shrank|-10|Movies/Raw"}, {"Movies/Raw/a.mov|0"}},
        ChangeCase{"SameFile", 10, 10, {}, {"Movies/Raw/a.mov|10"}},
        ChangeCase{"RemovedFile", 10, {}, {"Movies/Raw|a.mov|removed|-10|Movies/Raw"}, {}},
        ChangeCase{"RemovedEmptyFile", 0, {}, {}, {}}),
    [](const auto& tested) { return tested.param.name; });

TEST(Commit, TheFirstCheckSetsTheBaselineAndNothingElse) {
    TempHistory history;
    history.include("home");
    const CheckCommit commit = history.check(
        "home", {{"a", 1}, {"b/c", 2}}, {.allocatedBytes = 8192, .trashBytes = 4096, .cloudOnlyBytes = 7});
    EXPECT_EQ(commit, (CheckCommit{{"home"}, true, {}, 3, 0, history.now}));
    EXPECT_THAT(inventory(history), ElementsAre("a|1", "b/c|2"));
    EXPECT_THAT(observations(history), IsEmpty());
    EXPECT_THAT(history.rows("SELECT * FROM daily_totals"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT * FROM tracked_totals"), ElementsAre("home|2026-03-07|3"));
    EXPECT_THAT(history.rows("SELECT outcome, partial, files_seen, tracked_bytes, unreadable_folders, "
                             "cloud_only_bytes, allocated_bytes, trash_bytes, local_day FROM scan_runs"),
                ElementsAre("baseline|0|2|3|0|7|8192|4096|2026-03-07"));
    const LocationRecord record = history.record("home");
    EXPECT_EQ(record.baselineAt, history.now);
    EXPECT_EQ(record.lastCheckAt, history.now);
    EXPECT_EQ(record.trackedBytes, 3);
}

TEST(Commit, ChecksOfADayAddUpAndTheLatestTotalStays) {
    TempHistory history;
    history.include("home");
    history.check("home", {{"a", 10}});
    history.now += 60;
    EXPECT_EQ(history.check("home", {{"a", 15}, {"b", 100}}).totals, (ChangeTotals{105, 0, 2}));
    history.now += 60;
    EXPECT_EQ(history.check("home", {{"b", 90}}).totals, (ChangeTotals{0, 25, 2}));
    history.now += 60;
    EXPECT_EQ(history.check("home", {{"b", 90}}).totals, ChangeTotals{});
    EXPECT_THAT(history.rows("SELECT * FROM daily_totals"), ElementsAre("home|2026-03-07|105|25|4"));
    EXPECT_THAT(history.rows("SELECT * FROM tracked_totals"), ElementsAre("home|2026-03-07|90"));

    history.now += 86'400;
    history.check("home", {});
    EXPECT_THAT(history.rows("SELECT * FROM daily_totals"),
                ElementsAre("home|2026-03-07|105|25|4", "home|2026-03-08|0|90|1"));
    EXPECT_EQ(history.rows("SELECT COUNT(*) FROM scan_runs WHERE outcome = 'check'"),
              (std::vector<std::string>{"4"}));
    EXPECT_EQ(history.record("home").baselineAt, history.now - 86'400 - 180);
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

TEST(Commit, AnEntryWithoutStatusIsHiddenByItself) {
    TempHistory history;
    history.include("home");
    history.check("home", {{"d/a", 1}, {"d/b", 2}});
    EXPECT_EQ(history.check("home", {{"d/a", 1}}, {.unreadable = {{"d/b", false}}}).totals, ChangeTotals{});
    EXPECT_THAT(inventory(history), ElementsAre("d/a|1", "d/b|2"));
}

TEST(Commit, UnreadableFoldersAreListedWithTheirReason) {
    TempHistory history;
    history.include("home");
    const CheckCommit commit = history.check(
        "home", {},
        {.unreadable = {{"z", false}, {"b", true}, {"c", false}}, .cloudOnlyFolders = {"cloud", "c"}});
    EXPECT_EQ(commit.unreadableCount, 3);
    EXPECT_THAT(history.rows("SELECT rel_path, reason FROM unreadable_folders"),
                ElementsAre("b|1", "c|0", "cloud|2", "z|0"));
    EXPECT_THAT(
        history.store().unreadableFolders({"home"}).get(),
        ElementsAre(UnreadableFolder{"b", true}, UnreadableFolder{"c", false}, UnreadableFolder{"z", false}));
    EXPECT_EQ(history.rows("SELECT partial FROM scan_runs"), (std::vector<std::string>{"1"}));
    history.check("home", {});
    EXPECT_THAT(history.rows("SELECT * FROM unreadable_folders"), IsEmpty());
}

TEST(Commit, TheCapacityIsSampledAfterTheWalkOnItsOwnDay) {
    TempHistory history;
    history.include("home");
    bool walked = false;
    CheckRequest request = history.request("home", [&](const EntrySink&) {
        walked = true;
        return ScanReport{};
    });
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
                             .readAt = history.now + 86'400};
    };
    history.store().commit(request).get();
    EXPECT_THAT(history.rows("SELECT * FROM capacity_samples"),
                ElementsAre("v|Disk|/mnt|1|1772971200.0|2026-03-08|100|40|45|60|NULL"));
}

TEST(Commit, LocationsDoNotTouchEachOther) {
    TempHistory history;
    history.include("one");
    history.include("two");
    history.check("one", {{"a", 1}, {"b", 2}});
    history.check("two", {{"a", 10}, {"c", 20}});
    EXPECT_EQ(history.check("two", {{"a", 11}}).totals, (ChangeTotals{1, 20, 2}));
    EXPECT_THAT(inventory(history), ElementsAre("a|1", "b|2", "a|11"));
    EXPECT_EQ(history.record("one").trackedBytes, 3);
}

TEST(Commit, ManyBatchesAndNamesOfAnyBytesAreKept) {
    TempHistory history;
    history.include("home");
    Files files;
    for (int i = 0; i < 5'003; ++i) files["d" + std::to_string(i % 7) + "/" + std::to_string(i)] = i;
    std::string everyByte;
    for (int c = 1; c < 256; ++c)
        if (c != '/') everyByte += static_cast<char>(c);
    files[everyByte] = 5;
    history.check("home", files);
    files[everyByte] = 6;
    files.erase("d0/0");
    files.erase("d1/1");
    history.check("home", files);
    const auto changes = history.store().changes(LocalDay{2026, 3, 7}, std::nullopt).get();
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].name, everyByte);
    EXPECT_EQ(changes[0].byteDelta, 1);
    EXPECT_EQ(changes[1].folder, FolderPath{"d1"});
    EXPECT_EQ(changes[1].action, ChangeAction::removed);
    EXPECT_EQ(inventory(history).size(), files.size());
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

TEST(Commit, TheClockIsAskedBeforeTheWalkAndInTheTransaction) {
    TempHistory history;
    history.include("home");
    UnixTime clock = history.now;
    CheckRequest request = history.request("home", [&](const EntrySink&) {
        clock += 3600 * 12;  // the walk goes past midnight: the day is the one on which it ended
        return ScanReport{};
    });
    request.now = [&] { return clock; };
    history.store().commit(request).get();
    EXPECT_THAT(history.rows("SELECT started_at, finished_at, local_day FROM scan_runs"),
                ElementsAre("1772884800.0|1772928000.0|2026-03-08"));
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

}  // namespace
}  // namespace brindle
