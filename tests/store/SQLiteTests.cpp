#include "store/DatabaseQueue.h"
#include "store/SQLiteError.h"
#include "store/Transaction.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(SQLite, ATransactionRollsBackOnTheBodysErrorAndOnAFailedCommit) {
    SQLiteConnection db(":memory:");
    db.execute(
        "PRAGMA foreign_keys = ON; CREATE TABLE p (id INTEGER PRIMARY KEY);"
        "CREATE TABLE c (p REFERENCES p (id) DEFERRABLE INITIALLY DEFERRED)");
    EXPECT_THROW(inTransaction(db,
                               [&] {
                                   db.run("INSERT INTO p VALUES (1)");
                                   throw std::logic_error("the body's own");
                               }),
                 std::logic_error);
    EXPECT_THROW(inTransaction(db, [&] { db.run("INSERT INTO c VALUES (7)"); }), SQLiteError);
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
