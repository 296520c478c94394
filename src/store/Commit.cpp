#include "store/Commit.h"

#include "model/CheckedSum.h"
#include "store/BaselineInventory.h"
#include "store/CommitDiff.h"
#include "store/Differences.h"
#include "store/InventoryMerge.h"
#include "store/Transaction.h"
#include "store/UnreadableReason.h"

namespace brindle {
namespace {

/// What is known of a check once its walk is over.
struct WalkedCheck {
    bool isBaseline = false;
    UnixTime startedAt = 0;
    ScanReport report;
    std::optional<VolumeReading> reading;
};

/// What became of the inventory.
struct InventoryChange {
    ChangeTotals totals;
    std::int64_t trackedBytes = 0;
};

/// The rows that make a walk history. Inside the commit's transaction.
class CommitRows {
public:
    CommitRows(SQLiteConnection& db, const CheckRequest& request, const WalkedCheck& check)
        : db_(db), request_(request), check_(check), report_(check.report), id_(request.record.id.rawValue) {}

    /// `updateInventory` takes the DiffContext of this check and gives an InventoryChange.
    template <class UpdateInventory>
    CheckCommit write(UpdateInventory&& updateInventory) {
        finishedAt_ = request_.now();
        day_ = request_.calendar.day(finishedAt_).text();
        const std::int64_t scanID = insertRun();
        const InventoryChange change = updateInventory(DiffContext{
            .locationID = request_.record.id, .scanID = scanID, .finishedAt = finishedAt_, .day = day_});
        if (change.totals.count > 0) addToDay(change.totals);
        storeTrackedBytes(scanID, change.trackedBytes);
        updateLocation(change.trackedBytes);
        storeUnreadableFolders();
        if (check_.reading) storeCapacity(*check_.reading);
        return {.locationID = request_.record.id,
                .isBaseline = check_.isBaseline,
                .totals = change.totals,
                .trackedBytes = change.trackedBytes,
                .unreadableCount = unreadableCount(),
                .finishedAt = finishedAt_};
    }

private:
    [[nodiscard]] std::int64_t unreadableCount() const {
        return static_cast<std::int64_t>(report_.unreadable.size());
    }

    std::int64_t insertRun() {
        db_.run(
            "INSERT INTO scan_runs (location_id, started_at, finished_at, local_day, outcome, partial, "
            "files_seen, tracked_bytes, unreadable_folders, cloud_only_bytes, allocated_bytes, trash_bytes) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            id_, check_.startedAt, finishedAt_, day_, check_.isBaseline ? "baseline" : "check",
            !report_.unreadable.empty(), report_.filesSeen, 0, unreadableCount(), report_.cloudOnlyBytes,
            report_.allocatedBytes, report_.trashBytes);
        return db_.lastInsertRowID();
    }

    void addToDay(const ChangeTotals& totals) {
        db_.run(
            "INSERT INTO daily_totals (location_id, local_day, added, freed, count) VALUES (?, ?, ?, ?, ?) "
            "ON CONFLICT (location_id, local_day) DO UPDATE SET added = added + excluded.added, "
            "freed = freed + excluded.freed, count = count + excluded.count",
            id_, day_, totals.added, totals.freed, totals.count);
    }

    void storeTrackedBytes(std::int64_t scanID, std::int64_t tracked) {
        db_.run("UPDATE scan_runs SET tracked_bytes = ? WHERE id = ?", tracked, scanID);
        db_.run(
            "INSERT INTO tracked_totals (location_id, local_day, bytes) VALUES (?, ?, ?) "
            "ON CONFLICT (location_id, local_day) DO UPDATE SET bytes = excluded.bytes",
            id_, day_, tracked);
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
        for (const std::string& path : report_.uncounted) store(path, UnreadableReason::notOnDisk);
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
    const WalkedCheck& check_;
    const ScanReport& report_;
    const std::string& id_;
    UnixTime finishedAt_ = 0;
    std::string day_;
};

/// What every commit changes, and so tells whether one came in between.
struct CommittedState {
    std::optional<UnixTime> baselineAt;
    std::optional<UnixTime> lastCheckAt;
    std::optional<std::int64_t> lastRun;  // of any location

    bool operator==(const CommittedState&) const = default;
};

/// Throws: LocationGone.
CommittedState loadState(SQLiteConnection& db, const LocationID& id) {
    auto row = db.prepare(
        "SELECT baseline_at, last_check_at, (SELECT MAX(id) FROM scan_runs) FROM locations "
        "WHERE id = ? AND removed_at IS NULL");
    row.bind(id.rawValue);
    if (!row.step()) throw LocationGone();
    return {row.optionalReal(0), row.optionalReal(1), row.optionalInt64(2)};
}

/// Runs the walk and what comes between it and the commit.
WalkedCheck walk(const CheckRequest& request, bool isBaseline, const EntrySink& sink) {
    WalkedCheck check{.isBaseline = isBaseline, .startedAt = request.now()};
    check.report = request.walk(sink);
    if (request.cancellation && request.cancellation->isSet()) throw Cancelled();
    if (request.readVolume) check.reading = request.readVolume();
    return check;
}

/// Nothing is stored that a first check could be compared with: its files go straight into the inventory, in
/// the transaction that will be the commit. Nothing when the location has its baseline by now.
std::optional<CheckCommit> commitBaseline(SQLiteConnection& db, const CheckRequest& request) {
    return inTransaction(db, [&]() -> std::optional<CheckCommit> {
        if (loadState(db, request.record.id).baselineAt) return {};
        BaselineInventory inventory(db, request.record.id);
        const WalkedCheck check =
            walk(request, true, [&](std::span<const ScanEntry> batch) { inventory.add(batch); });
        return CommitRows(db, request, check).write([&](const DiffContext&) {
            return InventoryChange{.trackedBytes = inventory.bytes()};
        });
    });
}

/// Nothing when the inventory is not the one any more that the walk was held against.
std::optional<CheckCommit> commitDifferences(SQLiteConnection& db, const CheckRequest& request) {
    Differences differences(db);
    WalkedCheck check;
    CommittedState compared;
    std::int64_t inventoryBytes = 0;
    // Whoever else writes to the history meanwhile need not wait for the walk.
    inTransaction(
        db,
        [&] {
            compared = loadState(db, request.record.id);
            InventoryMerge merge(db, request.record.id, differences);
            check = walk(request, false, [&](std::span<const ScanEntry> batch) { merge.add(batch); });
            merge.finish();
            inventoryBytes = merge.inventoryBytes();
        },
        TransactionKind::read);
    return inTransaction(db, [&]() -> std::optional<CheckCommit> {
        if (loadState(db, request.record.id) != compared) return {};
        return CommitRows(db, request, check).write([&](const DiffContext& context) {
            const auto recorded = recordDifferences(db, context, check.report, differences);
            return InventoryChange{.totals = recorded.totals,
                                   .trackedBytes = checkedSum(inventoryBytes, recorded.inventoryDelta)};
        });
    });
}

}  // namespace

CheckCommit commitCheck(SQLiteConnection& db, const CheckRequest& request) {
    for (;;) {
        const bool isBaseline = !loadState(db, request.record.id).baselineAt;
        // Starts over when another program committed a check in between: what was compared may not be what is
        // stored any more.
        if (auto commit = isBaseline ? commitBaseline(db, request) : commitDifferences(db, request))
            return std::move(*commit);
    }
}

}  // namespace brindle
