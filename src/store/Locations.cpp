#include "store/Locations.h"

#include "model/NestedPath.h"
#include "store/Transaction.h"
#include "store/UnreadableReason.h"

#include <algorithm>

namespace brindle {
namespace {

/// The location that a walk would count the files of `inner` in, were it not for `inner`: the nearest one
/// around it on its volume, which no walk leaves. `path` is where `inner` lies in it.
struct OuterLocation {
    const LocationRecord* record = nullptr;
    std::string_view path;
};

OuterLocation outerLocationOf(const LocationRecord& inner, const std::vector<LocationRecord>& records) {
    OuterLocation nearest;
    for (const LocationRecord& record : records) {
        if (record.removedAt || record.volumeID != inner.volumeID) continue;
        const auto path =
            pathBelow(inner.scanPath, record.scanPath, record.caseSensitive || inner.caseSensitive);
        if (!path || path->empty()) continue;
        if (nearest.record == nullptr || path->size() < nearest.path.size()) nearest = {&record, *path};
    }
    return nearest;
}

/// The files of a location that is tracked no longer are the outer location's from its next check on. To that
/// check they are files that it could not see before: they enter its inventory, and are not news.
void handToOuterLocation(SQLiteConnection& db, const LocationID& id) {
    const auto records = loadLocations(db);
    const auto inner = std::ranges::find(records, id, &LocationRecord::id);
    if (inner == records.end() || inner->removedAt) return;
    const OuterLocation outer = outerLocationOf(*inner, records);
    if (outer.record == nullptr || !outer.record->baselineAt) return;
    db.run("INSERT OR IGNORE INTO unreadable_folders (location_id, rel_path, reason) VALUES (?, ?, ?)",
           outer.record->id.rawValue, outer.path, static_cast<int>(UnreadableReason::notOnDisk));
}

}  // namespace

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
        handToOuterLocation(db, id);
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
        handToOuterLocation(db, id);
        db.run("DELETE FROM locations WHERE id = ?", id.rawValue);
        db.run("DELETE FROM inventory WHERE location_id = ?", id.rawValue);
        db.run("DELETE FROM unreadable_folders WHERE location_id = ?", id.rawValue);
    });
}

std::vector<LocationRecord> loadLocations(SQLiteConnection& db) {
    auto rows = db.prepare(
        "SELECT id, name, path, scan_path, kind, volume_id, volume_name, case_sensitive, bookmark, added_at, "
        "removed_at, baseline_at, last_check_at, tracked_bytes, status, estimated_at FROM locations "
        "ORDER BY added_at, rowid");
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
