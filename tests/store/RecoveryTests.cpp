#include "store/Backup.h"
#include "store/HistoryExamination.h"
#include "store/HistoryFiles.h"
#include "store/Recovery.h"
#include "support/ChildProcess.h"
#include "support/FaultyVfs.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sqlite3.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Rows = std::set<std::string>;

constexpr std::size_t pageSize = 4096;

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void write(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

/// What was stored row by row: without sums, and without the mark that a recovery leaves.
Rows storedRows(const std::string& file) {
    const struct {
        const char* table;
        const char* columns;
    } tables[] = {{"locations",
                   "id, name, path, scan_path, kind, volume_id, volume_name, case_sensitive, hex(bookmark), "
                   "added_at, removed_at, baseline_at, last_check_at, status, estimated_at"},
                  {"scan_runs", "*"},
                  {"observations", "*"},
                  {"estimates", "*"},
                  {"capacity_samples", "*"},
                  {"exported_files", "*"},
                  {"inventory", "*"},
                  {"unreadable_folders WHERE rel_path != ''", "*"}};
    Rows rows;
    for (const auto& [table, columns] : tables)
        for (const auto& row : rowsOf(file, fmt::format("SELECT {} FROM {}", columns, table)))
            rows.insert(fmt::format("{}: {}", table, row));
    return rows;
}

/// A history of some days with rows in every table, on some dozens of pages.
class DamagedHistory : public testing::Test {
protected:
    DamagedHistory() {
        history.include("home");
        history.include("other");
        Files files;
        for (int i = 0; i < 260; ++i) files[fmt::format("folder{}/deep/file{:03}", i % 9, i)] = 1000 * i + 7;
        files["long/" + std::string(5000, 'n')] = 1;  // goes on on a page of its own
        for (int day = 0; day < 4; ++day) {
            for (int i = day; i < 260; i += 3)
                files[fmt::format("folder{}/deep/file{:03}", i % 9, i)] += 17 - day;
            CheckRequest request = history.request(
                "home", scriptedWalk(files, {.unreadable = {{"Private", true}, {"gone/away", false}}}));
            request.readVolume = [&] {
                return VolumeReading{.id = "volume",
                                     .name = "Volume",
                                     .mountPath = "/",
                                     .totalBytes = 1000,
                                     .freeBytes = 10,
                                     .availableBytes = 10,
                                     .readAt = history.now};
            };
            history.store().commit(std::move(request)).get();
            history.check("other", {{"a", day}, {"b", 5}});
            history.now += 86'400;
        }
        const auto estimates = [](const EstimateGroupSink&) {
            std::vector<EstimateRow> old;
            for (int i = 0; i < 60; ++i)
                old.push_back(
                    {{2026, 3, 1}, fmt::format("folder{}", i % 9), fmt::format("old{}", i), {i + 1, 1}});
            return old;
        };
        static_cast<void>(
            history.store()
                .replaceEstimates(
                    {.locationID = {"home"}, .walk = estimates, .now = [this] { return history.now; }})
                .get());
        history.store().recordExport("/home/ann/statement.csv", history.now).get();
        history.close();
        original = bytesOf(history.file());
        rows = storedRows(history.file());
    }

    [[nodiscard]] std::size_t pages() const { return original.size() / pageSize; }

    void damage(const std::string& bytes) const {
        for (const auto& entry : fs::directory_iterator(history.directory())) fs::remove(entry.path());
        write(history.file(), bytes);
    }

    /// Recovers the file and holds what every recovery keeps to.
    RecoveryReport recover() {
        const std::string damaged = bytesOf(history.file());
        const RecoveryReport report = recoverHistory(history.directory(), [this] { return history.now; });
        EXPECT_EQ(bytesOf(report.setAside), damaged);
        const auto healthy = examineHistory(HistoryFiles(history.directory()));
        EXPECT_EQ(healthy.condition, HistoryCondition::whole) << testing::PrintToString(healthy.faults);
        return report;
    }

    /// Whatever is done with a damaged file leaves it as it is, or works.
    void expectHandledWithCare() {
        const std::string damaged = bytesOf(history.file());
        static_cast<void>(examineHistory(HistoryFiles(history.directory())));
        try {
            static_cast<void>(history.store().loadLocations().get());
            static_cast<void>(history.store().snapshot(90, {2026, 3, 10}, history.calendar).get());
        } catch (const SQLiteError&) {
        } catch (const StoreError&) {
        }
        history.close();
        EXPECT_EQ(bytesOf(history.file()), damaged);
    }

    [[nodiscard]] Rows lostFrom(const Rows& recovered) const {
        Rows lost;
        std::ranges::set_difference(rows, recovered, std::inserter(lost, lost.end()));
        return lost;
    }
    [[nodiscard]] Rows inventedIn(const Rows& recovered) const {
        Rows invented;
        std::ranges::set_difference(recovered, rows, std::inserter(invented, invented.end()));
        return invented;
    }

    TempHistory history;
    std::string original;
    Rows rows;
};

TEST_F(DamagedHistory, LosesTheRowsOfADamagedPageAtMost) {
    ASSERT_GT(pages(), 20U);
    std::map<std::string, int> losses;
    std::vector<Rows> lostWith(pages());
    for (std::size_t page = 0; page < pages(); ++page) {
        SCOPED_TRACE(fmt::format("page {} is lost", page + 1));
        std::string damaged = original;
        damaged.replace(page * pageSize, pageSize, pageSize, '\0');
        damage(damaged);
        expectHandledWithCare();
        recover();
        const Rows recovered = storedRows(history.file());
        ASSERT_THAT(inventedIn(recovered), IsEmpty());
        lostWith[page] = lostFrom(recovered);
        for (const std::string& row : lostWith[page]) ++losses[row];
    }
    // Every row lies on one page, and on the pages that a long one goes on on: no other takes it along.
    EXPECT_EQ(losses.size(), rows.size());
    for (const auto& [row, count] : losses) EXPECT_EQ(count, row.size() > pageSize ? 2 : 1) << row;

    const std::uint64_t seed = testSeed();
    std::mt19937_64 random(seed);
    for (int round = 0; round < testRounds(2); ++round)
        for (std::size_t page = 0; page < pages(); ++page) {
            SCOPED_TRACE(
                fmt::format("bytes of page {} are flipped, seed {}, round {}", page + 1, seed, round));
            constexpr std::size_t flips = 4;
            std::string damaged = original;
            for (std::size_t i = 0; i < flips; ++i) {
                // One of them where the page's own order is written.
                const std::size_t at = page * pageSize + random() % (i == 0 ? 110 : pageSize);
                damaged[at] = static_cast<char>(damaged[at] ^ static_cast<char>(1 + random() % 255));
            }
            damage(damaged);
            expectHandledWithCare();
            recover();
            const Rows recovered = storedRows(history.file());
            // A byte that is another one in a row cannot be told; it changes that row, and adds none.
            ASSERT_LE(inventedIn(recovered).size(), flips);
            ASSERT_LE(recovered.size(), rows.size());
            // A row whose number became that of another one may take its place.
            std::size_t lostElsewhere = 0;
            for (const std::string& row : lostFrom(recovered))
                lostElsewhere += lostWith[page].contains(row) ? 0U : 1U;
            ASSERT_LE(lostElsewhere, flips);
        }

    Rows lostBehind;
    for (std::size_t kept = pages(); kept-- > 0;) {
        SCOPED_TRACE(fmt::format("the file ends after page {}", kept));
        lostBehind.insert(lostWith[kept].begin(), lostWith[kept].end());
        damage(original.substr(0, kept * pageSize));
        if (kept == 0) break;  // an empty file is a new history
        expectHandledWithCare();
        recover();
        const Rows recovered = storedRows(history.file());
        ASSERT_THAT(inventedIn(recovered), IsEmpty());
        ASSERT_EQ(lostFrom(recovered), lostBehind);
    }
    EXPECT_EQ(history.store().loadLocations().get().size(), 0U);
    const auto damages = static_cast<int>(pages()) * (testRounds(2) + 2);
    reportRounds(damages, damages);
}

// Fails or kills the process at the n-th call to the disk. Everything can be done again afterwards.
TEST_F(DamagedHistory, IsInItsPlaceUntilTheNewOneIsWhole) {
    std::string damaged = original;
    damaged.replace(2 * pageSize, 3 * pageSize, 3 * pageSize, 'x');
    const TempFolder elsewhere;
    write(elsewhere.path() / "backup", original);
    const struct {
        const char* name;
        std::function<void()> run;
    } works[] = {
        {"recovery",
         [&] { static_cast<void>(recoverHistory(history.directory(), [this] { return history.now; })); }},
        {"restoring",
         [&] {
             static_cast<void>(
                 restoreHistory(HistoryFiles(elsewhere.path(), "backup"), history.directory(), history.now));
         }},
    };
    const int stride = areTestsLong() ? 1 : 11;
    for (const auto& [name, run] : works) {
        damage(damaged);
        run();
        const Rows expected = storedRows(history.file());
        for (const auto effect : {DiskFault::Effect::kill, DiskFault::Effect::failOnward}) {
            bool isDone = false;
            for (int n = 1; !isDone; n += stride) {
                const bool isKill = effect == DiskFault::Effect::kill;
                SCOPED_TRACE(fmt::format("{}, {} at call {}", name, isKill ? "killed" : "disk full", n));
                damage(damaged);
                const int status = inChildProcess([&, &work = run] {
                    FaultyVfs disk;
                    disk.arm({.failAt = n, .code = SQLITE_FULL, .effect = effect});
                    work();
                });
                isDone = status == 0;
                if (!isDone) {
                    ASSERT_EQ(bytesOf(history.file()), damaged);
                    run();
                }
                ASSERT_EQ(storedRows(history.file()), expected);
            }
        }
    }
}

/// What a process that is killed while it writes leaves behind: a log with what is not in the file yet.
void leaveALog(const std::string& file, const std::string& sql) {
    inChildProcess([&] {
        SQLiteConnection db(file);
        db.execute(sql);
        raise(SIGKILL);
    });
}

TEST_F(DamagedHistory, IsReadWithItsLogAlsoWhenARecoveryWasInterruptedBetweenItsRenames) {
    leaveALog(history.file(), "UPDATE locations SET name = 'from the log' WHERE id = 'other'");
    std::string damaged = bytesOf(history.file());
    damaged.replace(4 * pageSize, pageSize, pageSize, 'x');
    write(history.file(), damaged);
    const std::string log = bytesOf(history.file() + "-wal");
    ASSERT_FALSE(log.empty());
    // The damaged file has its second name, the log is gone from the first, and the new file is not in place.
    const std::string kept = history.directory() + "/History-damaged-2026-03-11T12-00-00Z.sqlite";
    fs::create_hard_link(history.file(), kept);
    fs::rename(history.file() + "-wal", kept + "-wal");
    EXPECT_EQ(recover().setAside, kept);
    EXPECT_EQ(bytesOf(kept + "-wal"), log);
    EXPECT_THAT(history.rows("SELECT name FROM locations WHERE id = 'other'"), ElementsAre("from the log"));
    EXPECT_FALSE(fs::exists(history.file() + "-wal"));
}

TEST_F(DamagedHistory, GivesItsFilesBackToTheNextCheckWithoutRecordingThemAsAdded) {
    Files files;
    for (const auto& row : history.rows("SELECT rel_path, size FROM inventory WHERE location_id = 'home'")) {
        const auto bar = row.rfind('|');
        files[row.substr(0, bar)] = std::stoll(row.substr(bar + 1));
    }
    bool wasIncomplete = false;
    for (std::size_t page = 1; page < pages() && !wasIncomplete; ++page) {
        std::string damaged = original;
        damaged.replace(page * pageSize, pageSize, pageSize, '\0');
        damage(damaged);
        const auto report = recover();
        if (report.incompleteLocations.empty()) continue;
        wasIncomplete = true;
        EXPECT_THAT(report.incompleteLocations, ElementsAre("home"));
        files["folder0/new"] = 5;  // and what is new is not told from it
        const auto check = history.check("home", files);
        EXPECT_EQ(check.totals.count, 0);
        files["folder0/newer"] = 6;
        EXPECT_EQ(history.check("home", files).totals, (ChangeTotals{6, 0, 1}));
        history.close();
        EXPECT_EQ(examineHistory(HistoryFiles(history.directory())).condition, HistoryCondition::whole);
    }
    EXPECT_TRUE(wasIncomplete);
}

/// Every file of the history with its contents.
std::map<std::string, std::string> everyFile(const TempHistory& history) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(history.directory()))
        files[entry.path().filename()] = bytesOf(entry.path());
    return files;
}

TEST_F(DamagedHistory, IsToldFromEveryOtherConditionAndNoneIsTouched) {
    const struct {
        const char* name;
        std::function<void()> make;
        HistoryCondition condition;
        bool canBeOpened;
    } cases[] = {
        {"Whole", [] {}, HistoryCondition::whole, true},
        {"Empty", [&] { damage(""); }, HistoryCondition::absent, true},
        {"NoFile", [&] { fs::remove(history.file()); }, HistoryCondition::absent, true},
        {"NoDatabase", [&] { damage(std::string(3 * pageSize, 'x')); }, HistoryCondition::damaged, false},
        {"Foreign",
         [&] {
             damage("");
             rowsOf(history.file(), "CREATE TABLE bookmarks (url TEXT); INSERT INTO bookmarks VALUES ('x')");
         },
         HistoryCondition::foreign, false},
        {"ForeignOfAVersion",
         [&] {
             damage("");
             rowsOf(history.file(), "CREATE TABLE bookmarks (url TEXT); PRAGMA user_version = 5");
         },
         HistoryCondition::foreign, false},
        {"Newer", [&] { rowsOf(history.file(), "PRAGMA user_version = 6"); }, HistoryCondition::newer, false},
        {"LostVersion", [&] { rowsOf(history.file(), "PRAGMA user_version = 0"); }, HistoryCondition::damaged,
         false},
        {"WrongColumn",
         [&] {
             std::string damaged = original;
             const auto at = damaged.find("volume_used");
             ASSERT_NE(at, std::string::npos);
             damaged[at] = 'w';
             damage(damaged);
         },
         HistoryCondition::damaged, true},
        {"WrongSum", [&] { rowsOf(history.file(), "UPDATE daily_totals SET added = added + 1"); },
         HistoryCondition::damaged, true},
        {"Killed", [&] { leaveALog(history.file(), "UPDATE locations SET name = 'x'"); },
         HistoryCondition::whole, true},
        {"KilledWithoutIndex",
         [&] {
             leaveALog(history.file(), "UPDATE locations SET name = 'x'");
             fs::remove(history.file() + "-shm");
         },
         HistoryCondition::leftOpen, true},
    };
    for (const auto& [name, make, condition, canBeOpened] : cases) {
        SCOPED_TRACE(name);
        damage(original);
        make();
        const auto before = everyFile(history);
        EXPECT_EQ(examineHistory(HistoryFiles(history.directory())).condition, condition);
        EXPECT_EQ(everyFile(history), before);
        if (canBeOpened) {
            EXPECT_NO_THROW(static_cast<void>(history.store().loadLocations().get()));
        } else {
            EXPECT_ANY_THROW(static_cast<void>(history.store()));
            EXPECT_EQ(bytesOf(history.file()), before.at("History.sqlite"));
        }
        history.close();
    }
}

TEST_F(DamagedHistory, IsNotReplacedWhileAnotherProgramHasItOpen) {
    const HistoryFiles files(history.directory());
    EXPECT_EQ(files.user(), std::nullopt);
    static_cast<void>(history.store().loadLocations().get());
    EXPECT_EQ(inChildProcess([&] {
                  if (files.user() != getppid()) throw std::runtime_error("not seen");
                  try {
                      const HistoryLease lease(files);
                  } catch (const HistoryInUse&) {
                      return;
                  }
                  throw std::runtime_error("taken");
              }),
              0);
    history.close();
    const HistoryLease lease(files);
    EXPECT_NE(inChildProcess([&] {
                  SQLiteConnection db(files.database());
                  db.setPatience(std::chrono::milliseconds(0));
                  db.execute("SELECT * FROM locations");
              }),
              0);
}

}  // namespace
}  // namespace brindle
