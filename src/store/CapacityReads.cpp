#include "store/CapacityReads.h"

#include <algorithm>

namespace brindle {
namespace {

// Samples from before there was a column for it tell what is available as what is free.
const std::string capacityColumns =
    "SELECT c.volume_id, c.name, c.mount_path, c.total, c.free, COALESCE(c.available, c.free), "
    "c.volume_used, c.snapshots, c.is_internal, c.read_at ";

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
    // Looks two entries of the index up for each volume, however many samples there are.
    auto rows = db.prepare(
        "WITH RECURSIVE volumes (id) AS (SELECT MIN(volume_id) FROM capacity_samples UNION ALL "
        "SELECT (SELECT MIN(volume_id) FROM capacity_samples WHERE volume_id > id) FROM volumes "
        "WHERE id IS NOT NULL) " +
        capacityColumns +
        "FROM volumes CROSS JOIN capacity_samples c ON c.volume_id = id AND c.read_at = "
        "(SELECT MAX(read_at) FROM capacity_samples WHERE volume_id = id)");
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
    auto rows = db.prepare(capacityColumns +
                           "FROM capacity_samples c WHERE c.volume_id = ? AND c.local_day BETWEEN ? AND ? "
                           "ORDER BY c.read_at, c.rowid");
    rows.bind(volumeID, first.text(), last.text());
    std::vector<VolumeReading> readings;
    while (rows.step()) readings.push_back(reading(rows));
    return readings;
}

}  // namespace brindle
