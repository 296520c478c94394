#include "store/Commit.h"

#include "store/CommitDiff.h"
#include "store/CommitStaging.h"
#include "store/Transaction.h"
#include "store/UnreadableReason.h"

namespace brindle {
namespace {

/// The one transaction that makes a walk history.
class CommitTransaction {
public:
    CommitTransaction(SQLiteConnection& db, const CheckRequest& request, const ScanReport& report)
        : db_(db), request_(request), report_(report), id_(request.record.id.rawValue) {}

    CheckCommit run(UnixTime startedAt, const std::optional<VolumeReading>& reading) {
        finishedAt_ = request_.now();
        day_ = request_.calendar.day(finishedAt_).text();
        const std::int64_t scanID = insertRun(startedAt);
        ChangeTotals totals;
        if (isBaseline())
            setInventory();
        else
            totals = recordDifferences(
                db_,
                {.locationID = request_.record.id, .scanID = scanID, .finishedAt = finishedAt_, .day = day_},
                report_);
        if (totals.count > 0) addToDay(totals);
        const std::int64_t tracked = storeTrackedBytes(scanID);
        updateLocation(tracked);
        storeUnreadableFolders();
        if (reading) storeCapacity(*reading);
        return {.locationID = request_.record.id,
                .isBaseline = isBaseline(),
                .totals = totals,
                .trackedBytes = tracked,
                .unreadableCount = unreadableCount(),
                .finishedAt = finishedAt_};
    }

private:
    [[nodiscard]] bool isBaseline() const { return !request_.record.baselineAt; }
    [[nodiscard]] std::int64_t unreadableCount() const {
        return static_cast<std::int64_t>(report_.unreadable.size());
    }

    std::int64_t insertRun(UnixTime startedAt) {
        db_.run(
            "INSERT INTO scan_runs (location_id, started_at, finished_at, local_day, outcome, partial, "
            "files_seen, tracked_bytes, unreadable_folders, cloud_only_bytes, allocated_bytes, trash_bytes) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            id_, startedAt, finishedAt_, day_, isBaseline() ? "baseline" : "check",
            !report_.unreadable.empty(), report_.filesSeen, 0, unreadableCount(), report_.cloudOnlyBytes,
            report_.allocatedBytes, report_.trashBytes);
        return db_.lastInsertRowID();
    }

    void setInventory() {
        db_.run("DELETE FROM inventory WHERE location_id = ?", id_);
        db_.run(
            "INSERT INTO inventory (location_id, rel_path, size) SELECT ?, rel_path, size FROM temp.staging",
            id_);
    }

    void addToDay(const ChangeTotals& totals) {
        db_.run(
            "INSERT INTO daily_totals (location_id, local_day, added, freed, count) VALUES (?, ?, ?, ?, ?) "
            "ON CONFLICT (location_id, local_day) DO UPDATE SET added = added + excluded.added, "
            "freed = freed + excluded.freed, count = count + excluded.count",
            id_, day_, totals.added, totals.freed, totals.count);
    }

    std::int64_t storeTrackedBytes(std::int64_t scanID) {
        const std::int64_t tracked =
            db_.scalarInt64("SELECT COALESCE(SUM(size), 0) FROM inventory WHERE location_id = ?", id_)
                .value_or(0);
        db_.run("UPDATE scan_runs SET tracked_bytes = ? WHERE id = ?", tracked, scanID);
        db_.run(
            "INSERT INTO tracked_totals (location_id, local_day, bytes) VALUES (?, ?, ?) "
            "ON CONFLICT (location_id, local_day) DO UPDATE SET bytes = excluded.bytes",
            id_, day_, tracked);
        return tracked;
    }

    void updateLocation(std::int64_t tracked) {
        db_.run(
            "UPDATE locations SET last_check_at = ?, tracked_bytes = ?, status = 'active', "
            "baseline_at = COALESCE(baseline_at, ?) WHERE id = ?",
            finishedAt_, tracked, finishedAt_, id_);
    }

    void storeUnreadableFolders() {
        db_.run("DELETE FROM unreadable_folders WHERE location_id = ?", id_);
        auto insert = db_.prepare(
            "INSERT OR IGNORE INTO unreadable_folders (location_id, rel_path, reason) VALUES (?, ?, ?)");
        const auto store = [&](const std::string& path, UnreadableReason reason) {
            insert.bind(id_, path, static_cast<int>(reason));
            insert.finish();
        };
        for (const UnreadableFolder& folder : report_.unreadable)
            store(folder.relativePath,
                  folder.isPermission ? UnreadableReason::permission : UnreadableReason::other);
        for (const std::string& path : report_.cloudOnlyFolders) store(path, UnreadableReason::notOnDisk);
    }

    void storeCapacity(const VolumeReading& reading) {
        db_.run(
            "INSERT INTO capacity_samples (volume_id, name, mount_path, is_internal, read_at, local_day, "
            "total, "
            "free, available, volume_used, snapshots) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            reading.id, reading.name, reading.mountPath, reading.isInternal, reading.readAt,
            request_.calendar.day(reading.readAt).text(), reading.totalBytes, reading.freeBytes,
            reading.availableBytes, reading.volumeUsedBytes, reading.snapshotCount);
    }

    SQLiteConnection& db_;
    const CheckRequest& request_;
    const ScanReport& report_;
    const std::string& id_;
    UnixTime finishedAt_ = 0;
    std::string day_;
};

}  // namespace

CheckCommit commitCheck(SQLiteConnection& db, const CheckRequest& request) {
    const UnixTime startedAt = request.now();
    CommitStaging staging(db);
    const ScanReport report =
        request.walk([&staging](std::span<const ScanEntry> batch) { staging.add(batch); });
    if (request.cancellation && request.cancellation->isSet()) throw Cancelled();
    const auto reading = request.readVolume ? request.readVolume() : std::nullopt;
    return inTransaction(db, [&] { return CommitTransaction(db, request, report).run(startedAt, reading); });
}

}  // namespace brindle
