#include "store/Migrations.h"

#include "model/Translation.h"
#include "platform/PrivateFiles.h"
#include "store/HistoryFiles.h"
#include "store/SQLText.h"
#include "store/SQLiteError.h"
#include "store/Transaction.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <sqlite3.h>
#include <string_view>

namespace brindle {
namespace {

struct Step {
    std::int64_t brings;  // the version after it
    const char* sql;
};

// A step that was released is never edited: databases that went through it exist. A change of the schema
// is a new step at the end.
constexpr Step steps[] = {
    {1, R"sql(
CREATE TABLE locations (
    id TEXT PRIMARY KEY, name TEXT NOT NULL, path TEXT NOT NULL, scan_path TEXT NOT NULL, kind TEXT NOT NULL,
    volume_id TEXT NOT NULL, volume_name TEXT NOT NULL, case_sensitive INTEGER NOT NULL, bookmark BLOB,
    added_at REAL NOT NULL, removed_at REAL, baseline_at REAL, last_check_at REAL,
    tracked_bytes INTEGER NOT NULL DEFAULT 0, status TEXT NOT NULL DEFAULT 'active');
CREATE TABLE inventory (
    location_id TEXT NOT NULL, rel_path TEXT NOT NULL, size INTEGER NOT NULL,
    PRIMARY KEY (location_id, rel_path)) WITHOUT ROWID;
CREATE TABLE scan_runs (
    id INTEGER PRIMARY KEY, location_id TEXT NOT NULL, started_at REAL NOT NULL, finished_at REAL NOT NULL,
    local_day TEXT NOT NULL, outcome TEXT NOT NULL, partial INTEGER NOT NULL, files_seen INTEGER NOT NULL,
    tracked_bytes INTEGER NOT NULL, unreadable_folders INTEGER NOT NULL, cloud_only_bytes INTEGER NOT NULL);
CREATE INDEX scan_runs_by_day ON scan_runs (local_day, location_id);
CREATE TABLE unreadable_folders (
    location_id TEXT NOT NULL, rel_path TEXT NOT NULL, is_permission INTEGER NOT NULL,
    PRIMARY KEY (location_id, rel_path)) WITHOUT ROWID;
CREATE TABLE observations (
    id INTEGER PRIMARY KEY, location_id TEXT NOT NULL, folder TEXT NOT NULL, name TEXT NOT NULL,
    action TEXT NOT NULL, delta INTEGER NOT NULL, observed_at REAL NOT NULL, local_day TEXT NOT NULL,
    source TEXT NOT NULL, contributor TEXT NOT NULL, scan_id INTEGER NOT NULL);
CREATE INDEX observations_by_day ON observations (local_day, location_id);
CREATE TABLE daily_totals (
    location_id TEXT NOT NULL, local_day TEXT NOT NULL, added INTEGER NOT NULL, freed INTEGER NOT NULL,
    count INTEGER NOT NULL, PRIMARY KEY (location_id, local_day)) WITHOUT ROWID;
CREATE TABLE tracked_totals (
    location_id TEXT NOT NULL, local_day TEXT NOT NULL, bytes INTEGER NOT NULL,
    PRIMARY KEY (location_id, local_day)) WITHOUT ROWID;
CREATE TABLE capacity_samples (
    volume_id TEXT NOT NULL, name TEXT NOT NULL, mount_path TEXT NOT NULL, is_internal INTEGER NOT NULL,
    read_at REAL NOT NULL, local_day TEXT NOT NULL, total INTEGER NOT NULL, available INTEGER NOT NULL);
CREATE INDEX capacity_by_volume ON capacity_samples (volume_id, read_at);
)sql"},
    {2, "CREATE TABLE exported_files (path TEXT PRIMARY KEY, exported_at REAL NOT NULL) WITHOUT ROWID;"},
    {3, "ALTER TABLE unreadable_folders RENAME COLUMN is_permission TO reason;"},
    {4, R"sql(
CREATE TABLE estimates (
    id INTEGER PRIMARY KEY, location_id TEXT NOT NULL, local_day TEXT NOT NULL, folder TEXT NOT NULL,
    name TEXT NOT NULL, bytes INTEGER NOT NULL, file_count INTEGER NOT NULL, contributor TEXT NOT NULL,
    made_at REAL NOT NULL);
CREATE INDEX estimates_by_day ON estimates (local_day, location_id);
ALTER TABLE locations ADD COLUMN estimated_at REAL;
)sql"},
    // What was called "available" was the free space; the space available to the user is a figure of its own.
    {5, R"sql(
ALTER TABLE capacity_samples RENAME COLUMN available TO free;
ALTER TABLE capacity_samples ADD COLUMN available INTEGER;
ALTER TABLE capacity_samples ADD COLUMN volume_used INTEGER;
ALTER TABLE capacity_samples ADD COLUMN snapshots INTEGER;
ALTER TABLE scan_runs ADD COLUMN allocated_bytes INTEGER;
ALTER TABLE scan_runs ADD COLUMN trash_bytes INTEGER;
)sql"},
};
static_assert(std::end(steps)[-1].brings == schemaVersion);

std::int64_t versionOf(SQLiteConnection& db) {
    return db.scalarInt64("PRAGMA user_version").value_or(0);
}

// Written under another name first, so that whatever is called a backup is a whole one.
void copyBeforeMigration(SQLiteConnection& db, const std::filesystem::path& copy) {
    const std::string unfinished = copy.string() + ".partial";
    std::filesystem::remove(unfinished);
    createPrivateFile(unfinished);
    db.execute("VACUUM INTO " + textLiteral(unfinished));
    syncToDisk(unfinished);
    replaceFile(unfinished, copy.string());
}

}  // namespace

StoreError::StoreError(std::int64_t version, const char* message)
    : std::runtime_error(message), foundVersion_(version) {}

StoreError StoreError::newerSchema(std::int64_t version) {
    return {version, translated("This history was saved by a newer version of Brindle.")};
}

StoreError StoreError::foreign(std::int64_t version) {
    return {version, translated("History.sqlite is the database of another program, and was left as it is.")};
}

std::int64_t requireHistory(SQLiteConnection& db) {
    const std::int64_t version = versionOf(db);
    if (version > schemaVersion) throw StoreError::newerSchema(version);
    // What every version has.
    constexpr std::string_view ours[] = {"capacity_samples", "daily_totals",      "inventory",
                                         "locations",        "observations",      "scan_runs",
                                         "tracked_totals",   "unreadable_folders"};
    std::size_t all = 0;
    std::size_t found = 0;
    auto rows = db.prepare("SELECT name FROM sqlite_master WHERE type IN ('table', 'view')");
    for (; rows.step(); ++all)
        if (std::ranges::find(ours, rows.textView(0)) != std::end(ours)) ++found;
    if (all == 0 && version == 0) return version;
    if (all > 0 && found == 0) throw StoreError::foreign(version);
    if (found < std::size(ours) || version <= 0)
        throw SQLiteError(SQLITE_CORRUPT, "tables or the version are missing");
    return version;
}

void migrate(SQLiteConnection& db, const std::filesystem::path& directory, const Clock& now) {
    // Before anything is written: what is not ours to write stays as it is, its log included.
    std::int64_t version = 0;
    try {
        version = requireHistory(db);
    } catch (...) {
        db.leaveLogOnClose();
        throw;
    }
    db.execute("PRAGMA journal_mode = WAL");
    db.execute("PRAGMA synchronous = NORMAL");
    if (version == schemaVersion) return;
    if (version > 0)
        copyBeforeMigration(db, datedCopyPath(directory, fmt::format("before-v{}", version), now()));

    inTransaction(db, [&] {
        // Another program may have migrated it while this one waited for the lock.
        const std::int64_t locked = versionOf(db);
        for (const Step& step : steps)
            if (step.brings > locked) db.execute(step.sql);
        db.execute(fmt::format("PRAGMA user_version = {}", schemaVersion));
    });
}

}  // namespace brindle
