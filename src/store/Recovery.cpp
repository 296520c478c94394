#include "store/Recovery.h"

#include "platform/PrivateFiles.h"
#include "store/HistoryFiles.h"
#include "store/Migrations.h"
#include "store/RowSalvage.h"
#include "store/Transaction.h"
#include "store/UnreadableReason.h"

#include <fmt/format.h>
#include <map>

namespace brindle {
namespace {

/// Stores rows with one statement a table.
class RowWriter {
public:
    explicit RowWriter(SQLiteConnection& db) : db_(db) {}

    void write(const SavedTable& table, const SavedRow& row) {
        auto insertion = insertions_.find(&table);
        if (insertion == insertions_.end())
            insertion = insertions_.emplace(&table, db_.prepare(table.insertion())).first;
        insertion->second.bindAll(table.valuesOf(row));
        insertion->second.finish();
    }

private:
    SQLiteConnection& db_;
    std::map<const SavedTable*, SQLiteStatement> insertions_;
};

/// Files that are missing in the inventory would be recorded as added by the next check. To it they are files
/// that could not be seen before: they enter the inventory, and are not news.
std::vector<std::string> markIncompleteLocations(SQLiteConnection& db) {
    constexpr const char* incomplete =
        "FROM locations l WHERE l.removed_at IS NULL AND l.baseline_at IS NOT NULL AND l.tracked_bytes != "
        "(SELECT COALESCE(SUM(size), 0) FROM inventory WHERE location_id = l.id)";
    std::vector<std::string> names;
    auto rows = db.prepare(fmt::format("SELECT l.name {} ORDER BY l.added_at, l.rowid", incomplete));
    while (rows.step()) names.push_back(rows.text(0));
    db.run(fmt::format("INSERT OR REPLACE INTO unreadable_folders (location_id, rel_path, reason) "
                       "SELECT l.id, '', ? {}",
                       incomplete),
           static_cast<int>(UnreadableReason::notOnDisk));
    return names;
}

void sumUpAnew(SQLiteConnection& db) {
    db.execute(
        "INSERT INTO daily_totals (location_id, local_day, added, freed, count) "
        "SELECT location_id, local_day, SUM(MAX(delta, 0)), SUM(MAX(-delta, 0)), COUNT(*) FROM observations "
        "GROUP BY location_id, local_day;"
        "INSERT INTO tracked_totals (location_id, local_day, bytes) "
        "SELECT location_id, local_day, tracked_bytes FROM scan_runs WHERE id IN "
        "(SELECT MAX(id) FROM scan_runs GROUP BY location_id, local_day) "
        "ON CONFLICT (location_id, local_day) DO UPDATE SET bytes = excluded.bytes;"
        "UPDATE locations SET tracked_bytes = (SELECT COALESCE(SUM(size), 0) FROM inventory "
        "WHERE location_id = locations.id) WHERE removed_at IS NULL;");
}

RecoveryReport bringOver(const DatabasePages& pages, SQLiteConnection& db) {
    return inTransaction(db, [&] {
        RecoveryReport report;
        RowWriter writer(db);
        const auto salvaged = salvageRows(
            pages, [&](const SavedTable& table, const SavedRow& row) { writer.write(table, row); });
        for (const SalvagedTable& one : salvaged) {
            const std::string name = one.table->name;
            report.tables.push_back({.name = name,
                                     .rows = db.scalarInt64("SELECT COUNT(*) FROM " + name).value_or(0),
                                     .refusedRows = one.refusedRows,
                                     .damagedPages = one.damagedPages});
        }
        report.incompleteLocations = markIncompleteLocations(db);
        sumUpAnew(db);
        return report;
    });
}

}  // namespace

RecoveryReport recoverHistory(const std::filesystem::path& directory, const Clock& now) {
    const HistoryFiles files(directory);
    NewHistory fresh(files);
    RecoveryReport report;
    {
        const DatabasePages pages(files.database(), files.logForRecovery());
        SQLiteConnection db(fresh.path());
        migrate(db, directory, now);
        // One file at the end, without a log that belongs to it, and brought to the disk then.
        db.execute("PRAGMA journal_mode = DELETE; PRAGMA synchronous = OFF");
        report = bringOver(pages, db);
    }
    requireWholeDatabase(fresh.path());
    report.setAside = fresh.replaceHistory("damaged", now());
    return report;
}

}  // namespace brindle
