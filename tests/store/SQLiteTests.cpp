#include "store/DatabaseQueue.h"
#include "store/SQLiteError.h"
#include "store/Transaction.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace brindle {
namespace {

class SQLite : public testing::Test {
protected:
    TempFolder folder;
    SQLiteConnection db{(folder.path() / "test.sqlite").string()};
};

int codeOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const SQLiteError& error) {
        EXPECT_NE(error.message(), "");
        EXPECT_EQ(error.what(), "SQLite error " + std::to_string(error.code()) + ": " + error.message());
        return error.code();
    }
    return -1;
}

TEST_F(SQLite, EveryFailureIsAnErrorWithItsCode) {
    db.execute("CREATE TABLE t (a UNIQUE)");
    db.run("INSERT INTO t VALUES (1)");
    EXPECT_EQ(codeOf([&] { static_cast<void>(db.prepare("")); }), 0);
    EXPECT_EQ(codeOf([&] { static_cast<void>(db.prepare("SELEC")); }), SQLITE_ERROR);
    EXPECT_EQ(codeOf([&] { db.execute("SELECT * FROM nowhere"); }), SQLITE_ERROR);
    EXPECT_EQ(codeOf([&] { db.run("INSERT INTO t VALUES (?)", 1); }), SQLITE_CONSTRAINT);
    EXPECT_EQ(codeOf([&] { db.run("SELECT ?", 1, 2); }), SQLITE_RANGE);
    EXPECT_EQ(codeOf([&] { SQLiteConnection((folder.path() / "no" / "file").string()); }), SQLITE_CANTOPEN);
    EXPECT_EQ(codeOf([&] {
                  SQLiteConnection reader(db.path(), true);
                  reader.run("INSERT INTO t VALUES (2)");
              }),
              SQLITE_READONLY);
}

TEST_F(SQLite, ATransactionRollsBackOnTheBodysErrorAndOnAFailedCommit) {
    db.execute(
        "PRAGMA foreign_keys = ON; CREATE TABLE p (id INTEGER PRIMARY KEY);"
        "CREATE TABLE c (p REFERENCES p (id) DEFERRABLE INITIALLY DEFERRED)");
    EXPECT_THROW(inTransaction(db,
                               [&] {
                                   db.run("INSERT INTO p VALUES (1)");
                                   throw std::logic_error("the body's own");
                               }),
                 std::logic_error);
    EXPECT_EQ(codeOf([&] { inTransaction(db, [&] { db.run("INSERT INTO c VALUES (7)"); }); }),
              SQLITE_CONSTRAINT);
    EXPECT_EQ(inTransaction(
                  db, [&] { return db.scalarInt64("SELECT (SELECT COUNT(*) FROM p) + COUNT(*) FROM c"); }),
              0);
}

TEST(SQLiteDeathTest, AQueueEnteredFromItselfStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto enterTwice = [] {
        DatabaseQueue queue(":memory:", "Brindle.test");
        queue
            .perform(
                [&queue](SQLiteConnection&) { static_cast<void>(queue.perform([](SQLiteConnection&) {})); })
            .get();
    };
    EXPECT_DEATH(enterTwice(), "Brindle.test was entered from itself");
}

TEST(SQLiteDeathTest, AStatementThatOutlivesItsConnectionStopsTheProcess) {
    const auto outlive = [] {
        std::optional<SQLiteStatement> left;
        SQLiteConnection db(":memory:");
        left.emplace(db.prepare("SELECT 42"));
    };
    EXPECT_DEATH(outlive(), "outlives its connection: SELECT 42");
}

}  // namespace
}  // namespace brindle
