#include "store/HistoryExamination.h"
#include "store/HistoryFiles.h"
#include "store/Recovery.h"
#include "support/ChildProcess.h"
#include "support/FaultyVfs.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <algorithm>
#include <fmt/format.h>
#include <fstream>
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

std::string contents(const fs::path& file) {
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
        original = contents(history.file());
        rows = storedRows(history.file());
    }

    [[nodiscard]] std::size_t pages() const { return original.size() / pageSize; }

    void damage(const std::string& bytes) const {
        for (const auto& entry : fs::directory_iterator(history.directory())) fs::remove(entry.path());
        write(history.file(), bytes);
    }

    /// Recovers the file and holds what every recovery keeps to.
    RecoveryReport recover() {
        const std::string damaged = contents(history.file());
        const RecoveryReport report = recoverHistory(history.directory(), [this] { return history.now; });
        EXPECT_EQ(contents(report.setAside), damaged);
        const auto healthy = examineHistory(HistoryFiles(history.directory()));
        EXPECT_EQ(healthy.condition, HistoryCondition::whole) << testing::PrintToString(healthy.faults);
        return report;
    }

    /// Whatever is done with a damaged file leaves it as it is, or works.
    void expectHandledWithCare() {
        const std::string damaged = contents(history.file());
        static_cast<void>(examineHistory(HistoryFiles(history.directory())));
        try {
            static_cast<void>(history.store().loadLocations().get());
            static_cast<void>(history.store().snapshot(90, {2026, 3, 10}, history.calendar).get());
        } catch (const SQLiteError&) {
        } catch (const StoreError&) {
        }
        history.close();
        EXPECT_EQ(contents(history.file()), damaged);
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
            for (const std::string& row : lostFrom(recovered))
                ASSERT_TRUE(lostWith[page].contains(row)) << row;
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

}  // namespace
}  // namespace brindle
