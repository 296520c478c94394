#include "store/StagedCommit.h"

#include "model/Packages.h"
#include "store/Transaction.h"

#include <set>
#include <string>

namespace brindle {
namespace {

using Paths = std::set<std::string, std::less<>>;

void stage(SQLiteConnection& db, std::span<const ScanEntry> batch) {
    for (const ScanEntry& entry : batch)
        db.run("INSERT OR REPLACE INTO temp.staging VALUES (?, ?)", entry.relativePath, entry.size);
}

bool isUnderAny(const std::string& path, const Paths& folders) {
    for (std::size_t end = 0; end <= path.size(); ++end)
        if ((end == path.size() || path[end] == '/') && folders.contains(path.substr(0, end))) return true;
    return false;
}

class Diff {
public:
    Diff(SQLiteConnection& db, const std::string& id, UnixTime at, std::string day, std::int64_t scanID)
        : db_(db), id_(id), at_(at), day_(std::move(day)), scanID_(scanID) {}

    void observeNewAndChanged(const Paths& hiddenBefore) {
        auto rows = db_.prepare(
            "SELECT s.rel_path, s.size, i.size FROM temp.staging s LEFT JOIN inventory i "
            "ON i.location_id = ?1 AND i.rel_path = s.rel_path WHERE i.rel_path IS NULL OR i.size != s.size");
        rows.bind(id_);
        while (rows.step()) {
            const std::int64_t delta = rows.int64(1) - rows.int64(2);
            if (!rows.isNull(2))
                observe(rows.text(0), delta > 0 ? "grew" : "shrank", delta);
            else if (!isUnderAny(rows.text(0), hiddenBefore) && delta >= 1)
                observe(rows.text(0), "added", delta);
        }
    }

    void observeRemoved(const Paths& hiddenNow) {
        auto rows = db_.prepare(
            "SELECT i.rel_path, i.size FROM inventory i WHERE i.location_id = ?1 AND NOT EXISTS "
            "(SELECT 1 FROM temp.staging s WHERE s.rel_path = i.rel_path)");
        rows.bind(id_);
        while (rows.step()) {
            if (isUnderAny(rows.text(0), hiddenNow)) continue;
            db_.run("INSERT OR IGNORE INTO temp.removed VALUES (?)", rows.text(0));
            if (rows.int64(1) > 0) observe(rows.text(0), "removed", -rows.int64(1));
        }
    }

    void applyToInventory() {
        db_.run(
            "INSERT INTO inventory (location_id, rel_path, size) SELECT ?1, s.rel_path, s.size "
            "FROM temp.staging s LEFT JOIN inventory i ON i.location_id = ?1 AND i.rel_path = s.rel_path "
            "WHERE i.rel_path IS NULL OR i.size != s.size "
            "ON CONFLICT (location_id, rel_path) DO UPDATE SET size = excluded.size",
            id_);
        db_.run(
            "DELETE FROM inventory WHERE location_id = ?1 AND rel_path IN (SELECT rel_path FROM "
            "temp.removed)",
            id_);
    }

    void addToDay() {
        if (totals_.count == 0) return;
        db_.run(
            "INSERT INTO daily_totals (location_id, local_day, added, freed, count) VALUES (?, ?, ?, ?, ?) "
            "ON CONFLICT (location_id, local_day) DO UPDATE SET added = added + excluded.added, "
            "freed = freed + excluded.freed, count = count + excluded.count",
            id_, day_, totals_.added, totals_.freed, totals_.count);
    }

    [[nodiscard]] const ChangeTotals& totals() const { return totals_; }

private:
    void observe(const std::string& path, const char* action, std::int64_t delta) {
        const auto slash = path.rfind('/');
        const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash);
        const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
        db_.run(
            "INSERT INTO observations (location_id, folder, name, action, delta, observed_at, local_day, "
            "source, contributor, scan_id) VALUES (?, ?, ?, ?, ?, ?, ?, 'measured', ?, ?)",
            id_, folder, name, action, delta, at_, day_, contributor(folder), scanID_);
        (delta > 0 ? totals_.added : totals_.freed) += delta > 0 ? delta : -delta;
        ++totals_.count;
    }

    SQLiteConnection& db_;
    const std::string& id_;
    UnixTime at_;
    std::string day_;
    std::int64_t scanID_;
    ChangeTotals totals_;
};

Paths previouslyUnreadable(SQLiteConnection& db, const std::string& id) {
    Paths paths;
    auto rows = db.prepare("SELECT rel_path FROM unreadable_folders WHERE location_id = ?");
    rows.bind(id);
    while (rows.step()) paths.insert(rows.text(0));
    return paths;
}

void storeUnreadable(SQLiteConnection& db, const std::string& id, const ScanReport& report) {
    db.run("DELETE FROM unreadable_folders WHERE location_id = ?", id);
    const char* insert =
        "INSERT OR IGNORE INTO unreadable_folders (location_id, rel_path, reason) VALUES (?, ?, ?)";
    for (const auto& folder : report.unreadable)
        db.run(insert, id, folder.relativePath, folder.isPermission ? 1 : 0);
    for (const auto& path : report.cloudOnlyFolders) db.run(insert, id, path, 2);
}

}  // namespace

CheckCommit stagedCommit(SQLiteConnection& db, const CheckRequest& request) {
    CheckCommit told{.locationID = request.record.id, .isBaseline = !request.record.baselineAt};
    const std::string& id = request.record.id.rawValue;
    db.execute(
        "CREATE TEMP TABLE staging (rel_path TEXT PRIMARY KEY, size INTEGER NOT NULL) WITHOUT ROWID;"
        "CREATE TEMP TABLE removed (rel_path TEXT PRIMARY KEY) WITHOUT ROWID");
    const UnixTime startedAt = request.now();
    const ScanReport report = request.walk([&](std::span<const ScanEntry> batch) { stage(db, batch); });
    inTransaction(db, [&] {
        const UnixTime at = request.now();
        const std::string day = request.calendar.day(at).text();
        const auto unreadable = static_cast<std::int64_t>(report.unreadable.size());
        db.run(
            "INSERT INTO scan_runs (location_id, started_at, finished_at, local_day, outcome, partial, "
            "files_seen, tracked_bytes, unreadable_folders, cloud_only_bytes, allocated_bytes, trash_bytes) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            id, startedAt, at, day, told.isBaseline ? "baseline" : "check", unreadable > 0, report.filesSeen,
            0, unreadable, report.cloudOnlyBytes, report.allocatedBytes, report.trashBytes);
        const std::int64_t scanID = db.lastInsertRowID();
        if (told.isBaseline) {
            db.run("DELETE FROM inventory WHERE location_id = ?", id);
            db.run(
                "INSERT INTO inventory (location_id, rel_path, size) SELECT ?, rel_path, size "
                "FROM temp.staging",
                id);
        } else {
            Paths hiddenNow(report.cloudOnlyFolders.begin(), report.cloudOnlyFolders.end());
            for (const auto& folder : report.unreadable) hiddenNow.insert(folder.relativePath);
            Diff diff(db, id, at, day, scanID);
            diff.observeNewAndChanged(previouslyUnreadable(db, id));
            diff.observeRemoved(hiddenNow);
            diff.applyToInventory();
            diff.addToDay();
            told.totals = diff.totals();
        }
        const auto tracked =
            db.scalarInt64("SELECT COALESCE(SUM(size), 0) FROM inventory WHERE location_id = ?", id);
        told.trackedBytes = tracked.value();
        told.unreadableCount = unreadable;
        told.finishedAt = at;
        db.run("UPDATE scan_runs SET tracked_bytes = ? WHERE id = ?", tracked, scanID);
        db.run(
            "INSERT INTO tracked_totals (location_id, local_day, bytes) VALUES (?, ?, ?) "
            "ON CONFLICT (location_id, local_day) DO UPDATE SET bytes = excluded.bytes",
            id, day, tracked);
        db.run(
            "UPDATE locations SET last_check_at = ?, tracked_bytes = ?, status = 'active', "
            "baseline_at = COALESCE(baseline_at, ?) WHERE id = ?",
            at, tracked, at, id);
        storeUnreadable(db, id, report);
    });
    db.execute("DROP TABLE temp.staging; DROP TABLE temp.removed");
    return told;
}

}  // namespace brindle
