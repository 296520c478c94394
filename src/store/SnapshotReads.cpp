#include "store/SnapshotReads.h"

#include "store/CapacityReads.h"
#include "store/Locations.h"
#include "store/SpaceOnDisk.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_set>

namespace brindle {
namespace {

/// Finds the entry of a row's location. Rows of one location follow each other, so most need no look-up.
template <class Value>
class EntryOfRow {
public:
    explicit EntryOfRow(std::unordered_map<LocationID, Value>& entries) : entries_(entries) {}

    Value& operator()(std::string_view location) {
        if (entry_ == nullptr || location != id_) {
            id_ = location;
            entry_ = &entries_[{id_}];
        }
        return *entry_;
    }

private:
    std::unordered_map<LocationID, Value>& entries_;
    std::string id_;
    Value* entry_ = nullptr;
};

LocalDay dayAt(const SQLiteStatement& row, int column) {
    return LocalDay::parse(row.textView(column)).value_or(LocalDay{});
}

TrackedLocation tracked(const LocationRecord& record, const Calendar& calendar) {
    const auto dayOf = [&calendar](const std::optional<UnixTime>& at) {
        return at ? std::optional(calendar.day(*at)) : std::nullopt;
    };
    return {.id = record.id,
            .name = record.name,
            .path = record.path,
            .kind = record.kind,
            .volumeID = record.volumeID,
            .status = record.status,
            .trackedBytes = record.trackedBytes,
            .lastCheck = record.lastCheckAt,
            .trackingStart = dayOf(record.baselineAt),
            .trackingEnd = dayOf(record.removedAt),
            .caseSensitive = record.caseSensitive};
}

void readDayTotals(SQLiteConnection& db, const std::string& since, HistorySnapshot& snapshot) {
    // By location, as the table is kept: a day or two of a long history are found without reading the others.
    auto rows = db.prepare(
        "SELECT d.location_id, d.local_day, d.added, d.freed, d.count FROM locations l "
        "CROSS JOIN daily_totals d ON d.location_id = l.id AND d.local_day >= ?");
    rows.bind(since);
    EntryOfRow entry(snapshot.dayTotals);
    while (rows.step())
        entry(rows.textView(0))[dayAt(rows, 1)] = {rows.int64(2), rows.int64(3), rows.int64(4)};
}

void readCheckedDays(SQLiteConnection& db, const std::string& since, HistorySnapshot& snapshot) {
    auto rows = db.prepare(
        "SELECT location_id, local_day, MAX(partial) FROM scan_runs WHERE outcome IN ('baseline', 'check') "
        "AND local_day >= ? GROUP BY location_id, local_day");
    rows.bind(since);
    EntryOfRow checked(snapshot.checkedDays);
    EntryOfRow partial(snapshot.partialDays);
    while (rows.step()) {
        checked(rows.textView(0)).insert(dayAt(rows, 1));
        if (rows.boolean(2)) partial(rows.textView(0)).insert(dayAt(rows, 1));
    }
}

/// Extends what a location was tracked on to the days of its checks. They were named where the user was then;
/// worked out here and now from the times of the first check and of the removal, a first check on the other
/// side of the date line, or one by a clock that was ahead, would hide the days before it.
void trackCheckedDays(HistorySnapshot& snapshot) {
    for (TrackedLocation& location : snapshot.locations) {
        const auto checked = snapshot.checkedDays.find(location.id);
        if (checked == snapshot.checkedDays.end()) continue;
        for (const LocalDay& day : checked->second) {
            if (day > snapshot.today) continue;
            if (location.trackingStart) location.trackingStart = std::min(*location.trackingStart, day);
            if (location.trackingEnd) location.trackingEnd = std::max(*location.trackingEnd, day);
        }
    }
}

/// Of all days: the last one before the period carries the size into it.
void readTrackedTotals(SQLiteConnection& db, HistorySnapshot& snapshot) {
    auto rows = db.prepare("SELECT location_id, local_day, bytes FROM tracked_totals");
    EntryOfRow entry(snapshot.trackedTotals);
    while (rows.step()) {
        auto& days = entry(rows.textView(0));
        days.insert_or_assign(days.end(), dayAt(rows, 1), rows.int64(2));  // they come in order
    }
}

/// What the latest check of each of these locations found, where it was measured.
std::unordered_map<LocationID, LocationSpace> loadSpace(SQLiteConnection& db,
                                                        const std::vector<LocationRecord>& records) {
    std::unordered_set<LocationID> missing;
    for (const LocationRecord& record : records)
        if (!record.removedAt && record.lastCheckAt) missing.insert(record.id);
    // Latest first and only until every location was met, which is soon: runs check them all.
    auto rows = db.prepare(
        "SELECT location_id, allocated_bytes, trash_bytes FROM scan_runs "
        "WHERE outcome IN ('baseline', 'check') ORDER BY id DESC");
    std::unordered_map<LocationID, LocationSpace> spaces;
    while (!missing.empty() && rows.step()) {
        const LocationID id{rows.text(0)};
        if (missing.erase(id) != 0 && !rows.isNull(1)) spaces[id] = {rows.int64(1), rows.int64(2)};
    }
    return spaces;
}

void readEstimates(SQLiteConnection& db, const std::string& since, HistorySnapshot& snapshot) {
    auto rows = db.prepare(
        "SELECT location_id, local_day, SUM(bytes), SUM(file_count) FROM estimates WHERE local_day >= ? "
        "GROUP BY location_id, local_day");
    rows.bind(since);
    EntryOfRow entry(snapshot.estimates);
    while (rows.step()) entry(rows.textView(0))[dayAt(rows, 1)] = {rows.int64(2), rows.int64(3)};
}

}  // namespace

HistorySnapshot loadSnapshot(SQLiteConnection& db, int days, const LocalDay& today,
                             const Calendar& calendar) {
    if (days < 1) throw std::invalid_argument("a snapshot covers one day at least");
    const std::string since = calendar.addingDays(today, 1 - days).text();
    const auto records = loadLocations(db);

    HistorySnapshot snapshot{.today = today, .retentionDays = days};
    for (const LocationRecord& record : records) snapshot.locations.push_back(tracked(record, calendar));
    readDayTotals(db, since, snapshot);
    readCheckedDays(db, since, snapshot);
    trackCheckedDays(snapshot);
    readTrackedTotals(db, snapshot);
    snapshot.volumes = latestReadings(db);
    const SpaceOnDisk space(records, loadSpace(db, records));
    for (const VolumeReading& volume : snapshot.volumes)
        snapshot.breakdowns[volume.id] = spaceBreakdown(volume, space.on(volume.id));
    readEstimates(db, since, snapshot);
    return snapshot;
}

std::unordered_map<LocationID, std::int64_t> loadCloudOnlyBytes(SQLiteConnection& db) {
    auto rows = db.prepare(
        "SELECT r.location_id, r.cloud_only_bytes FROM scan_runs r "
        "JOIN (SELECT location_id, MAX(id) AS latest FROM scan_runs WHERE outcome IN ('baseline', 'check') "
        "GROUP BY location_id) m ON m.latest = r.id");
    std::unordered_map<LocationID, std::int64_t> bytes;
    while (rows.step()) bytes[{rows.text(0)}] = rows.int64(1);
    return bytes;
}

}  // namespace brindle
