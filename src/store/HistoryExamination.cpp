#include "store/HistoryExamination.h"

#include "model/Translation.h"
#include "store/HistoryFiles.h"
#include "store/Locations.h"
#include "store/Migrations.h"
#include "store/SQLiteConnection.h"
#include "store/SQLiteError.h"
#include "store/SavedTables.h"
#include "store/Transaction.h"

#include <fmt/format.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// What is derived from other rows, and how to find where it is not what follows from them.
struct SumRule {
    const char* wrongRows;  // an SQL text that counts them
    const char* fault;
};

constexpr SumRule sumRules[] = {
    {"SELECT COUNT(*) FROM locations l WHERE removed_at IS NULL AND baseline_at IS NOT NULL AND "
     "tracked_bytes != (SELECT COALESCE(SUM(size), 0) FROM inventory WHERE location_id = l.id)",
     "The size of a location isn't the sum of its files."},
    {"WITH summed AS (SELECT location_id, local_day, SUM(MAX(delta, 0)), SUM(MAX(-delta, 0)), COUNT(*) "
     "FROM observations GROUP BY location_id, local_day), "
     "stored AS (SELECT location_id, local_day, added, freed, count FROM daily_totals) "
     "SELECT (SELECT COUNT(*) FROM (SELECT * FROM summed EXCEPT SELECT * FROM stored)) + "
     "(SELECT COUNT(*) FROM (SELECT * FROM stored EXCEPT SELECT * FROM summed))",
     "The totals of a day aren't the sums of its changes."},
    {"SELECT COUNT(*) FROM scan_runs r LEFT JOIN tracked_totals t "
     "ON t.location_id = r.location_id AND t.local_day = r.local_day WHERE r.id IN "
     "(SELECT MAX(id) FROM scan_runs GROUP BY location_id, local_day) AND t.bytes IS NOT r.tracked_bytes",
     "The tracked size of a day isn't what its last check found."},
};

std::int64_t sizeOf(const std::string& path) {
    std::error_code none;
    const auto bytes = fs::file_size(path, none);
    return none ? 0 : static_cast<std::int64_t>(bytes);
}

std::vector<std::string> damagedPages(SQLiteConnection& db) {
    std::vector<std::string> faults;
    auto rows = db.prepare("PRAGMA integrity_check(10)");
    while (rows.step())
        if (rows.textView(0) != "ok") faults.push_back(rows.text(0));
    return faults;
}

std::vector<std::string> wrongSums(SQLiteConnection& db) {
    std::vector<std::string> faults;
    for (const SumRule& rule : sumRules)
        if (db.scalarInt64(rule.wrongRows) != 0) faults.emplace_back(translated(rule.fault));
    return faults;
}

/// A letter that changed in the list of the tables leaves every page right.
void requireColumns(SQLiteConnection& db) {
    for (const SavedTable& table : savedTables())
        static_cast<void>(db.prepare(fmt::format("SELECT {} FROM {}", table.columnNames, table.name)));
}

void examine(SQLiteConnection& db, HistoryExamination& found) {
    found.version = requireHistory(db);
    found.faults = damagedPages(db);
    if (found.faults.empty() && found.version == schemaVersion) {
        requireColumns(db);
        found.faults = wrongSums(db);
        found.locations = loadLocations(db);
    }
    if (!found.faults.empty())
        found.condition = HistoryCondition::damaged;
    else if (found.version == 0)
        found.condition = HistoryCondition::absent;
    else
        found.condition =
            found.version < schemaVersion ? HistoryCondition::outdated : HistoryCondition::whole;
}

}  // namespace

SQLiteConnection::Access quietAccess(const HistoryFiles& files) {
    if (files.user()) return SQLiteConnection::Access::read;
    return sizeOf(files.log()) > 0 ? SQLiteConnection::Access::readWithFixedIndex
                                   : SQLiteConnection::Access::readUnchanging;
}

HistoryExamination examineHistory(const HistoryFiles& files) {
    HistoryExamination found{.bytes = sizeOf(files.database()) + sizeOf(files.log())};
    if (sizeOf(files.database()) == 0) return found;
    const auto access = quietAccess(files);
    std::error_code none;
    if (access == SQLiteConnection::Access::readWithFixedIndex && !fs::exists(files.logIndex(), none)) {
        found.condition = HistoryCondition::leftOpen;
        return found;
    }
    try {
        SQLiteConnection db(files.database(), access);
        db.execute("PRAGMA temp_store = MEMORY");  // nothing of a history on any disk but its own
        inTransaction(
            db, [&] { examine(db, found); }, TransactionKind::read);
    } catch (const StoreError& error) {
        found.version = error.foundVersion();
        found.condition = found.version > schemaVersion ? HistoryCondition::newer : HistoryCondition::foreign;
    } catch (const SQLiteError& error) {
        if (!error.isDamage() && !error.isWrongStatement()) throw;
        found.condition = HistoryCondition::damaged;
        found.faults.push_back(error.message());
    }
    // Read as if nobody could write, while somebody has begun to: what was seen may be half of each.
    if (access != SQLiteConnection::Access::read && found.condition == HistoryCondition::damaged &&
        files.user())
        return examineHistory(files);
    return found;
}

}  // namespace brindle
