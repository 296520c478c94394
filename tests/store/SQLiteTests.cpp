#include "store/DatabaseQueue.h"
#include "store/SQLiteError.h"
#include "store/Transaction.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace brindle {
namespace {

class SQLite : public testing::Test {
protected:
    TempFolder folder;
    SQLiteConnection db{(folder.path() / "test.sqlite").string()};
};

TEST_F(SQLite, ValuesComeBackAsTheyWereBound) {
    db.execute("CREATE TABLE t (i, b, r, s, x, n, e)");
    const std::vector<std::byte> blob = {std::byte{0}, std::byte{255}};
    const std::string name = "caf\xe9 \xff";  // not UTF-8, and kept byte for byte
    db.run("INSERT INTO t VALUES (?, ?, ?, ?, ?, ?, ?)", INT64_MIN, true, -1.25, name, blob,
           std::optional<double>(), "");
    auto rows = db.prepare("SELECT *, typeof(i), typeof(b), typeof(r), typeof(n), typeof(e) FROM t");
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.int64(0), INT64_MIN);
    EXPECT_TRUE(rows.boolean(1));
    EXPECT_EQ(rows.optionalReal(2), -1.25);
    EXPECT_EQ(rows.text(3), name);
    EXPECT_EQ(rows.blob(4), blob);
    EXPECT_EQ(rows.optionalReal(5), std::nullopt);
    EXPECT_EQ(rows.blob(5), std::nullopt);
    EXPECT_EQ(rows.text(5), "");
    EXPECT_EQ(rows.text(7) + rows.text(8) + rows.text(9), "integerintegerreal");
    EXPECT_EQ(rows.text(10) + rows.text(11), "nulltext");
    EXPECT_FALSE(rows.step());
}

TEST_F(SQLite, TextIsCutAtItsFirstNul) {
    auto rows = db.prepare("SELECT length(CAST(? AS BLOB))");
    rows.bind(std::string_view("ab\0cd", 5));
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.int64(0), 2);
    rows.finish();
}

TEST_F(SQLite, AScalarIsAbsentWithoutARowAndForNull) {
    EXPECT_EQ(db.scalarInt64("SELECT 1 WHERE 0"), std::nullopt);
    EXPECT_EQ(db.scalarInt64("SELECT NULL"), std::nullopt);
    EXPECT_EQ(db.scalarInt64("SELECT ? + 1", 41), 42);
}

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

TEST_F(SQLite, AQueueRunsItsItemsInOrderAndPassesErrorsOn) {
    DatabaseQueue queue(db.path(), "test");
    std::vector<std::future<std::size_t>> results;
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < 100; ++i)
        results.push_back(queue.perform([&order, i](SQLiteConnection&) {
            order.push_back(i);
            return order.size();
        }));
    for (std::size_t i = 0; i < results.size(); ++i) EXPECT_EQ(results[i].get(), i + 1);
    EXPECT_TRUE(std::ranges::is_sorted(order));

    auto failing = queue.perform([](SQLiteConnection& queued) { queued.execute("nonsense"); });
    EXPECT_THROW(failing.get(), SQLiteError);
    EXPECT_THROW(DatabaseQueue((folder.path() / "no" / "file").string(), "test"), SQLiteError);
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
