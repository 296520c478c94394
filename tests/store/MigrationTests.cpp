#include "support/ChildProcess.h"
#include "support/FaultyVfs.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <csignal>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sqlite3.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

std::string contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A history of an older version with rows in every table.
void plant(const TempHistory& history, int version) {
    fs::create_directories(history.directory());
    std::ofstream(history.file()).close();
    rowsOf(history.file(), contents(fs::path(BRINDLE_FIXTURES) / fmt::format("history-v{}.sql", version)));
}

std::vector<fs::path> backups(const TempHistory& history) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(history.directory()))
        if (entry.path().filename().string().starts_with("History-before-v") &&
            entry.path().extension() == ".sqlite")
            found.push_back(entry.path());
    return found;
}

/// Everything that makes up the schema: columns with type, constraint and default, and indexes.
std::vector<std::string> schema(const TempHistory& history) {
    return history.rows(
        "SELECT m.type, m.name, m.tbl_name, c.name, c.type, c.\"notnull\", c.dflt_value, c.pk, l.wr "
        "FROM sqlite_master m LEFT JOIN pragma_table_xinfo(m.name) c LEFT JOIN pragma_table_list(m.name) l "
        "UNION ALL SELECT 'column', m.name, i.seqno, i.name, '', '', '', '', '' "
        "FROM sqlite_master m JOIN pragma_index_info(m.name) i WHERE m.type = 'index' ORDER BY 1, 2, 3, 4");
}

class OldHistory : public testing::TestWithParam<int> {
protected:
    OldHistory() {
        plant(history, version());
        before = history.everything();
        original = contents(history.file());
    }

    [[nodiscard]] int version() const { return GetParam(); }

    void putBack() const {
        for (const fs::path& left : backups(history)) fs::remove(left);
        fs::remove(history.file() + "-wal");
        std::ofstream(history.file(), std::ios::binary) << original;
    }

    /// After an attempt that was cut short. The next start brings the history over.
    void expectOldOrNew() {
        EXPECT_EQ(history.rows("PRAGMA integrity_check"), ok);
        if (history.rows("PRAGMA user_version")[0] != "5") {
            EXPECT_EQ(history.everything(), before);
        }
        for (const fs::path& copy : backups(history)) {
            EXPECT_EQ(rowsOf(copy, "PRAGMA integrity_check"), ok);
            EXPECT_EQ(rowsOf(copy, "PRAGMA user_version"),
                      std::vector<std::string>{std::to_string(version())});
        }
        EXPECT_EQ(history.store().loadLocations().get().size(), 2U);
        history.close();
    }

    const std::vector<std::string> ok{"ok"};
    TempHistory history;
    std::vector<std::string> before;
    std::string original;
};

TEST_P(OldHistory, BecomesTheCurrentSchemaWithItsRowsAndIsCopiedWholeFirst) {
    const auto tables = history.rows("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name");
    const auto rowCounts = [&] {
        std::vector<std::string> rows;
        for (const std::string& table : tables)
            rows.push_back(table + history.rows("SELECT COUNT(*) FROM " + table)[0]);
        return rows;
    };
    const auto counts = rowCounts();
    history.now = 1'709'647'629;
    static_cast<void>(history.store());
    TempHistory fresh;
    static_cast<void>(fresh.store());
    EXPECT_EQ(schema(history), schema(fresh));
    EXPECT_EQ(history.rows("PRAGMA user_version"), std::vector<std::string>{"5"});
    EXPECT_EQ(rowCounts(), counts);

    const auto records = history.store().loadLocations().get();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].bookmark, (Bytes{std::byte{1}, std::byte{2}, std::byte{255}}));
    EXPECT_EQ(records[0].baselineAt, 1709640060.5);
    EXPECT_EQ(records[1].kind, LocationKind::volume);
    EXPECT_EQ(records[1].removedAt, 1709700000.0);
    const auto changes = history.store().changes(LocalDay{2024, 3, 6}, LocationID{"home"}).get();
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].name, "it's.txt");
    EXPECT_THAT(history.rows("SELECT rel_path, reason FROM unreadable_folders WHERE reason < 2"),
                ElementsAre("Private|1", "broken|0"));
    // What older versions called available was the free space.
    EXPECT_THAT(history.rows("SELECT total, free, available FROM capacity_samples"),
                ElementsAre("500000|123456|NULL"));
    EXPECT_THAT(history.rows("SELECT DISTINCT allocated_bytes, trash_bytes FROM scan_runs"),
                ElementsAre("NULL|NULL"));

    // And it goes on: the next check compares with the old inventory.
    EXPECT_EQ(history.check("home", {{"a.bin", 1001}}).totals, (ChangeTotals{1, 500, 2}));
    history.close();

    const fs::path copy = fs::path(history.directory()) /
                          fmt::format("History-before-v{}-2024-03-05T14-07-09Z.sqlite", version());
    ASSERT_THAT(backups(history), ElementsAre(copy));
    EXPECT_THAT(backups(fresh), IsEmpty());
    EXPECT_EQ(fs::status(copy).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    fs::rename(copy, history.file());
    EXPECT_EQ(history.everything(), before);
}

TEST_P(OldHistory, IsOldOrNewWhenTheProcessIsKilledAtAnyCallToTheDisk) {
    bool wasKilled = true;
    int kills = 0;
    for (int n = 1; wasKilled; ++n, ++kills) {
        SCOPED_TRACE("killed at " + std::to_string(n));
        putBack();
        const int status = inChildProcess([&] {
            FaultyVfs disk;
            disk.arm({.failAt = n, .effect = DiskFault::Effect::kill});
            static_cast<void>(history.store());
            history.close();
        });
        wasKilled = WIFSIGNALED(status);
        ASSERT_TRUE(wasKilled || status == 0);
        expectOldOrNew();
    }
    reportRounds(kills, kills);
    EXPECT_GT(kills, 10);
}

TEST_P(OldHistory, IsOldOrNewWhenTheDiskIsFull) {
    FaultyVfs disk;
    bool failed = true;
    int n = 1;
    for (; failed; ++n) {
        SCOPED_TRACE("full at " + std::to_string(n));
        putBack();
        disk.arm({.failAt = n, .code = SQLITE_FULL, .effect = DiskFault::Effect::failOnward});
        failed = false;
        try {
            static_cast<void>(history.store());
        } catch (const std::exception&) {
            failed = true;
        }
        disk.disarm();
        history.close();
        expectOldOrNew();
    }
    reportRounds(n, n);
}

INSTANTIATE_TEST_SUITE_P(Migration, OldHistory, testing::Values(1, 2, 3, 4),
                         [](const auto& tested) { return "Version" + std::to_string(tested.param); });

TEST(Migration, AHistoryOfANewerVersionIsRefusedUntouched) {
    for (const bool hasLog : {false, true}) {
        TempHistory history;
        history.include("home");
        history.close();
        if (hasLog) {  // written by a process that was killed: its log holds what the file does not
            inChildProcess([&] {
                SQLiteConnection db(history.file());
                db.execute("UPDATE locations SET name = 'x'; PRAGMA user_version = 6");
                raise(SIGKILL);
            });
        } else {
            rowsOf(history.file(), "PRAGMA journal_mode = DELETE; PRAGMA user_version = 6");
        }
        const std::string file = contents(history.file());
        const std::string log = contents(history.file() + "-wal");
        EXPECT_EQ(log.empty(), !hasLog);
        try {
            static_cast<void>(history.store());
            ADD_FAILURE() << "opened";
        } catch (const StoreError& error) {
            EXPECT_STREQ(error.what(), "This history was saved by a newer version of Brindle.");
            EXPECT_EQ(error.foundVersion(), 6);
        }
        EXPECT_EQ(contents(history.file()), file);
        EXPECT_EQ(contents(history.file() + "-wal"), log);
    }
}

}  // namespace
}  // namespace brindle
