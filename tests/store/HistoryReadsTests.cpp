#include "store/SQLiteError.h"
#include "store/StoredHistory.h"
#include "support/TempHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr LocalDay today{2026, 3, 7};
constexpr LocalDay yesterday{2026, 3, 6};

class HistoryReads : public testing::Test {
protected:
    HistoryReads() {
        history.include("a");
        history.include("b");
    }

    void execute(const std::string& sql) const { rowsOf(history.file(), sql); }

    void estimate(const std::string& location, const std::string& day, std::int64_t bytes, int files) const {
        execute(
            "INSERT INTO estimates (location_id, local_day, folder, name, bytes, file_count, contributor, "
            "made_at) VALUES ('" +
            location + "', '" + day + "', 'x/y/z', '" + (files == 1 ? "one" : "") + "', " +
            std::to_string(bytes) + ", " + std::to_string(files) + ", 'x/y', 9.5)");
    }

    TempHistory history;
    StoredHistory source{history.sharedStore(), history.calendar, [this] { return history.now; }};
};

TEST_F(HistoryReads, EstimatesComeByDayThenSize) {
    estimate("a", "2026-03-06", 10, 1);
    estimate("b", "2026-03-06", 30, 4);
    estimate("a", "2026-03-05", 7, 1);
    estimate("gone", "1970-01-01", 1, 1);
    const auto bytesOf = [](const std::vector<FileChange>& changes) {
        std::vector<std::int64_t> bytes;
        for (const FileChange& change : changes) bytes.push_back(change.byteDelta);
        return bytes;
    };
    EXPECT_THAT(bytesOf(source.allEstimates({}).get()), ElementsAre(1, 7, 30, 10));
    EXPECT_THAT(bytesOf(source.allEstimates({LocationID{"a"}}).get()), ElementsAre(7, 10));
    EXPECT_THAT(bytesOf(source.periodEstimates(yesterday, today, {}).get()), ElementsAre(30, 10));

    EXPECT_EQ(source.periodEstimates(yesterday, today, {LocationID{"b"}}).get().front(),
              (FileChange{.id = 2,
                          .locationID = {"b"},
                          .folder = {"x", "y", "z"},
                          .name = "",
                          .action = ChangeAction::added,
                          .byteDelta = 30,
                          .observedAt = 9.5,
                          .day = yesterday,
                          .source = ChangeSource::estimated,
                          .fileCount = 4}));
    EXPECT_THAT(history.store().estimateContributors({2026, 3, 5}, std::nullopt).get(),
                UnorderedElementsAre(EstimatedFolder{{{"a"}, {"x", "y"}}, {17, 2}},
                                     EstimatedFolder{{{"b"}, {"x", "y"}}, {30, 4}}));
    EXPECT_THAT(history.store().estimateContributors(yesterday, LocationID{"a"}).get(),
                ElementsAre(EstimatedFolder{{{"a"}, {"x", "y"}}, {10, 1}}));
}

TEST_F(HistoryReads, OlderRowsAreReadByWhatTheyHave) {
    history.check("a", {}, {.allocatedBytes = 500, .cloudOnlyBytes = 3});
    history.check("a", {}, {.allocatedBytes = 700, .cloudOnlyBytes = 4});
    history.check("b", {}, {.allocatedBytes = 20});
    // The latest run of "a" is of a program that did not measure; the one before does not speak for it.
    execute("UPDATE scan_runs SET allocated_bytes = NULL, trash_bytes = NULL WHERE id = 2");
    execute(
        "INSERT INTO capacity_samples VALUES ('volume', 'D', '/', 1, 7, '2026-03-06', 1000, 300, NULL, "
        "NULL, NULL), ('volume', 'D', '/', 1, 6, '2026-03-05', 1000, 100, 150, 850, 2), "
        "('other', 'O', '/o', 0, 1, '2026-03-05', 10, 4, 5, 6, 0)");
    const auto snapshot = source.snapshot().get();
    const VolumeReading latest{.id = "volume",
                               .name = "D",
                               .mountPath = "/",
                               .totalBytes = 1000,
                               .freeBytes = 300,
                               .availableBytes = 300,
                               .isInternal = true,
                               .readAt = 7};
    ASSERT_EQ(snapshot.volumes.size(), 2U);
    EXPECT_THAT(snapshot.volumes, testing::Contains(latest));
    EXPECT_EQ(snapshot.breakdowns.at("volume").files, 20);
    EXPECT_EQ(snapshot.breakdowns.at("volume").snapshotCount, std::nullopt);
    EXPECT_EQ(snapshot.breakdowns.at("other").snapshotCount, 0);
    EXPECT_THAT(history.store().cloudOnlyBytes().get(),
                UnorderedElementsAre(Pair(LocationID{"a"}, 4), Pair(LocationID{"b"}, 0)));

    const auto samples = history.store().capacitySamples("volume", {2026, 3, 5}, {2026, 3, 6}).get();
    ASSERT_EQ(samples.size(), 2U);
    EXPECT_EQ(samples[0].availableBytes, 150);
    EXPECT_EQ(samples[0].volumeUsedBytes, 850);
    EXPECT_EQ(samples[1], latest);
    EXPECT_TRUE(history.store().capacitySamples("volume", {2026, 3, 7}, {2026, 3, 9}).get().empty());
}

TEST_F(HistoryReads, AStreamIsTheListOneAtATimeAsItWasWhenItBegan) {
    Files files;
    for (int i = 0; i < 3000; ++i)
        files[std::to_string(i % 1500) + "/deeper/" + std::to_string(i)] = 1 + i % 7;
    history.check("a", {});
    history.check("b", {});
    // The clock is set back between the checks of a day: its changes go by their times and not as they came.
    for (const UnixTime step : {-3600.0, 7200.0, 86'400.0}) {
        history.now += step;
        history.check("b", files);
        history.check("a", files);
        for (auto& [path, size] : files) ++size;
    }
    estimate("a", "2026-03-07", 10, 1);
    estimate("b", "2026-03-06", 30, 4);
    estimate("b", "2026-03-07", 30, 2);

    const LocalDay tomorrow{2026, 3, 8};
    const auto expectTheList = [&](const LocalDay& first, const LocalDay& last, const LocationScope& scope) {
        for (const auto kind : {ChangeSource::measured, ChangeSource::estimated}) {
            const auto list = kind == ChangeSource::measured
                                  ? source.periodChanges(first, last, scope).get()
                                  : source.periodEstimates(first, last, scope).get();
            std::vector<FileChange> streamed;
            source.streamChanges(first, last, scope, kind,
                                 [&](const FileChange& change) { streamed.push_back(change); });
            EXPECT_TRUE(streamed == list) << streamed.size() << " instead of " << list.size();
            const auto count = source.countChanges(first, last, scope, kind).get();
            EXPECT_EQ(count, source.HistorySource::countChanges(first, last, scope, kind).get());
            EXPECT_EQ(count.rows, std::ssize(list));
        }
    };
    expectTheList(yesterday, tomorrow, {});
    expectTheList(today, today, {LocationID{"a"}});
    expectTheList(tomorrow, tomorrow, {LocationID{"gone"}});

    // While it goes on, nobody waits for it, and it does not see what comes.
    std::int64_t streamed = 0;
    source.streamChanges(today, tomorrow, {}, ChangeSource::measured, [&](const FileChange&) {
        if (++streamed > 1) return;
        history.now += 60;
        history.check("b", {});
        EXPECT_EQ(source.dayChanges(tomorrow, {}).get().size(), 9000U);
    });
    EXPECT_EQ(streamed, 18'000);

    // Whatever times were recorded, and in whatever order.
    execute("UPDATE observations SET observed_at = 1e9 WHERE id % 5 = 0");
    expectTheList(yesterday, tomorrow, {});
    execute("UPDATE observations SET location_id = CASE id % 3 WHEN 0 THEN 'a' ELSE 'b' END");
    expectTheList(yesterday, tomorrow, {});
    expectTheList(today, tomorrow, {LocationID{"a"}});
    execute("UPDATE observations SET observed_at = id * 7919 % 20011");
    expectTheList(today, tomorrow, {});
    EXPECT_THROW(source.streamChanges(today, today, {}, ChangeSource::measured,
                                      [](const FileChange&) { throw std::runtime_error("the sink's"); }),
                 std::runtime_error);
}

TEST_F(HistoryReads, AFailureOfTheDatabaseReachesWhoeverAsked) {
    EXPECT_THROW(history.store().snapshot(0, today, history.calendar).get(), std::invalid_argument);
    static_cast<void>(source.snapshot().get());
    execute("DROP TABLE estimates");
    EXPECT_THROW(source.snapshot().get(), SQLiteError);
    EXPECT_THROW(source.allEstimates({}).get(), SQLiteError);
    EXPECT_EQ(source.dayChanges(today, {}).get().size(), 0U);
}

}  // namespace
}  // namespace brindle
