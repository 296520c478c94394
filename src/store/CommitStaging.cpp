#include "store/CommitStaging.h"

#include "store/SQLiteError.h"
#include "store/Transaction.h"

namespace brindle {
namespace {

constexpr const char* emptyTables = "DELETE FROM temp.staging; DELETE FROM temp.removed;";

}  // namespace

SQLiteConnection& CommitStaging::withEmptyTables(SQLiteConnection& db) {
    db.execute(
        "CREATE TEMP TABLE IF NOT EXISTS staging (rel_path TEXT PRIMARY KEY, size INTEGER NOT NULL) WITHOUT "
        "ROWID;"
        "CREATE TEMP TABLE IF NOT EXISTS removed (rel_path TEXT PRIMARY KEY) WITHOUT ROWID;");
    db.execute(emptyTables);
    return db;
}

CommitStaging::CommitStaging(SQLiteConnection& db)
    : db_(withEmptyTables(db)),
      insert_(db.prepare("INSERT OR REPLACE INTO temp.staging (rel_path, size) VALUES (?, ?)")) {}

CommitStaging::~CommitStaging() {
    try {
        db_.execute(emptyTables);
    } catch (const SQLiteError&) {  // NOLINT(bugprone-empty-catch): the next check empties them first
    }
}

void CommitStaging::add(std::span<const ScanEntry> batch) {
    inTransaction(db_, [&] {
        for (const ScanEntry& entry : batch) {
            insert_.bind(entry.relativePath, entry.size);
            insert_.finish();
        }
    });
}

}  // namespace brindle
