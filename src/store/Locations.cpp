#include "store/Locations.h"

#include "store/Transaction.h"
#include "store/UnreadableReason.h"

namespace brindle {

void insertLocation(SQLiteConnection& db, const LocationRecord& record) {
    db.run(
        "INSERT INTO locations (id, name, path, scan_path, kind, volume_id, volume_name, case_sensitive, "
        "bookmark, added_at, status) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        record.id.rawValue, record.name, record.path, record.scanPath, rawText(record.kind), record.volumeID,
        record.volumeName, record.caseSensitive, record.bookmark, record.addedAt, rawText(record.status));
}

void setLocationStatus(SQLiteConnection& db, const LocationID& id, LocationStatus status) {
    db.run("UPDATE locations SET status = ? WHERE id = ? AND removed_at IS NULL", rawText(status),
           id.rawValue);
}

void updateLocationAccess(SQLiteConnection& db, const LocationID& id, const std::string& path,
                          const std::string& scanPath, const std::optional<Bytes>& bookmark) {
    db.run("UPDATE locations SET path = ?, scan_path = ?, bookmark = ? WHERE id = ? AND removed_at IS NULL",
           path, scanPath, bookmark, id.rawValue);
}

void removeLocation(SQLiteConnection& db, const LocationID& id, UnixTime at) {
    inTransaction(db, [&] {
        db.run("UPDATE locations SET removed_at = ?, status = 'paused' WHERE id = ?", at, id.rawValue);
        db.run("DELETE FROM inventory WHERE location_id = ?", id.rawValue);
        db.run("DELETE FROM unreadable_folders WHERE location_id = ?", id.rawValue);
    });
}

void forgetLocation(SQLiteConnection& db, const LocationID& id) {
    inTransaction(db, [&] {
        const auto withoutBaseline = db.scalarInt64(
            "SELECT COUNT(*) FROM locations WHERE id = ? AND baseline_at IS NULL", id.rawValue);
        if (withoutBaseline != 1) return;
        db.run("DELETE FROM locations WHERE id = ?", id.rawValue);
        db.run("DELETE FROM inventory WHERE location_id = ?", id.rawValue);
        db.run("DELETE FROM unreadable_folders WHERE location_id = ?", id.rawValue);
    });
}

std::vector<LocationRecord> loadLocations(SQLiteConnection& db) {
    auto rows = db.prepare(
        "SELECT id, name, path, scan_path, kind, volume_id, volume_name, case_sensitive, bookmark, added_at, "
        "removed_at, baseline_at, last_check_at, tracked_bytes, status, estimated_at FROM locations "
        "ORDER BY added_at");
    std::vector<LocationRecord> records;
    while (rows.step())
        records.push_back({.id = {rows.text(0)},
                           .name = rows.text(1),
                           .path = rows.text(2),
                           .scanPath = rows.text(3),
                           .kind = locationKindFrom(rows.textView(4)),
                           .volumeID = rows.text(5),
                           .volumeName = rows.text(6),
                           .caseSensitive = rows.boolean(7),
                           .bookmark = rows.blob(8),
                           .addedAt = rows.real(9),
                           .removedAt = rows.optionalReal(10),
                           .baselineAt = rows.optionalReal(11),
                           .lastCheckAt = rows.optionalReal(12),
                           .trackedBytes = rows.int64(13),
                           .status = locationStatusFrom(rows.textView(14)),
                           .estimatedAt = rows.optionalReal(15)});
    return records;
}

std::vector<UnreadableFolder> loadUnreadableFolders(SQLiteConnection& db, const LocationID& id) {
    auto rows = db.prepare(
        "SELECT rel_path, reason FROM unreadable_folders WHERE location_id = ? AND reason != ? "
        "ORDER BY rel_path");
    rows.bind(id.rawValue, static_cast<int>(UnreadableReason::notOnDisk));
    std::vector<UnreadableFolder> folders;
    while (rows.step())
        folders.push_back({rows.text(0), rows.int64(1) == static_cast<int>(UnreadableReason::permission)});
    return folders;
}

}  // namespace brindle
