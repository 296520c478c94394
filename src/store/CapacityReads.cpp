#include "store/CapacityReads.h"

#include <algorithm>

namespace brindle {
namespace {

// Samples from before there was a column for it tell what is available as what is free.
const std::string capacityQuery =
    "SELECT c.volume_id, c.name, c.mount_path, c.total, c.free, COALESCE(c.available, c.free), "
    "c.volume_used, c.snapshots, c.is_internal, c.read_at FROM capacity_samples c ";

VolumeReading reading(const SQLiteStatement& row) {
    return {.id = row.text(0),
            .name = row.text(1),
            .mountPath = row.text(2),
            .totalBytes = row.int64(3),
            .freeBytes = row.int64(4),
            .availableBytes = row.int64(5),
            .volumeUsedBytes = row.optionalInt64(6),
            .snapshotCount = row.optionalInt64(7),
            .isInternal = row.boolean(8),
            .readAt = row.real(9)};
}

}  // namespace

std::vector<VolumeReading> latestReadings(SQLiteConnection& db) {
    auto rows = db.prepare(capacityQuery +
                           "JOIN (SELECT volume_id, MAX(read_at) AS latest FROM capacity_samples "
                           "GROUP BY volume_id) m ON m.volume_id = c.volume_id AND m.latest = c.read_at");
    std::vector<VolumeReading> readings;
    while (rows.step()) {
        VolumeReading latest = reading(rows);
        // Two locations of a volume may have been checked at one instant.
        if (std::ranges::find(readings, latest.id, &VolumeReading::id) == readings.end())
            readings.push_back(std::move(latest));
    }
    return readings;
}

std::vector<VolumeReading> readingsBetween(SQLiteConnection& db, const std::string& volumeID,
                                           const LocalDay& first, const LocalDay& last) {
    auto rows = db.prepare(
        capacityQuery + "WHERE c.volume_id = ? AND c.local_day BETWEEN ? AND ? ORDER BY c.read_at, c.rowid");
    rows.bind(volumeID, first.text(), last.text());
    std::vector<VolumeReading> readings;
    while (rows.step()) readings.push_back(reading(rows));
    return readings;
}

}  // namespace brindle
