#include "store/Retention.h"

#include "store/Transaction.h"

#include <chrono>
#include <string>

namespace brindle {
namespace {

/// A connection that does not wait long for others, while this lives.
class Impatience {
public:
    explicit Impatience(SQLiteConnection& db) : db_(db) { db_.setPatience(std::chrono::milliseconds(500)); }
    ~Impatience() { db_.setPatience(SQLiteConnection::usualPatience); }
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;

private:
    SQLiteConnection& db_;
};

}  // namespace

bool isPruningDue(SQLiteConnection& db, const LocalDay& before, const LocalDay& today) {
    // Tables with an index by day. The others have rows of days that one of these has, too.
    const auto isDue = db.scalarInt64(
        "SELECT (EXISTS (SELECT 1 FROM scan_runs WHERE local_day < ?1) "
        "OR EXISTS (SELECT 1 FROM observations WHERE local_day < ?1) "
        "OR EXISTS (SELECT 1 FROM estimates WHERE local_day < ?1)) "
        "AND EXISTS (SELECT 1 FROM scan_runs WHERE local_day >= ?1 AND local_day < ?2)",
        before.text(), today.text());
    return isDue == 1;
}

void prune(SQLiteConnection& db, const LocalDay& before) {
    const std::string day = before.text();
    inTransaction(db, [&] {
        db.run("DELETE FROM observations WHERE local_day < ?", day);
        db.run("DELETE FROM daily_totals WHERE local_day < ?", day);
        db.run("DELETE FROM scan_runs WHERE local_day < ?", day);
        db.run("DELETE FROM capacity_samples WHERE local_day < ?", day);
        db.run("DELETE FROM estimates WHERE local_day < ?", day);
        db.run(
            "DELETE FROM tracked_totals WHERE local_day < ?1 AND local_day < (SELECT MAX(t.local_day) FROM "
            "tracked_totals t WHERE t.location_id = tracked_totals.location_id AND t.local_day < ?1)",
            day);
    });
}

bool checkpoint(SQLiteConnection& db) {
    const Impatience whileTheQueueStandsStill(db);
    return db.scalarInt64("PRAGMA wal_checkpoint(TRUNCATE)") == 0;
}

}  // namespace brindle
