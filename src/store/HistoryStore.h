#pragma once

#include "model/Calendar.h"
#include "model/Change.h"
#include "model/FolderSummary.h"
#include "model/HistorySnapshot.h"
#include "model/HistorySource.h"
#include "model/LocationRecord.h"
#include "store/Commit.h"
#include "store/DatabaseQueue.h"
#include "store/EstimateRows.h"
#include "store/InventorySample.h"
#include "store/Migrations.h"
#include "store/SQLiteError.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace brindle {

/// The whole storage history: one SQLite file, "History.sqlite" in the data directory, with a connection
/// that writes and one that can only read. docs/SCHEMA.md describes the file.
///
/// Every operation runs on its queue and gives its result or its error (SQLiteError unless said otherwise)
/// through the future; any thread may ask. Writes and checks run one after the other; reads see the last
/// committed state and never wait for them.
class HistoryStore {
public:
    /// Opens the history, creating the directory (mode 0700) and the file (0600) as needed, and brings it to
    /// the current schema. Throws: StoreError, SQLiteError, std::system_error.
    explicit HistoryStore(std::filesystem::path directory, const Clock& now = systemNow);

    [[nodiscard]] const std::filesystem::path& directory() const { return directory_; }

    /// Adds a location. A second one with the same id fails.
    [[nodiscard]] std::future<void> insert(LocationRecord record);
    /// Changes nothing at a location that was removed.
    [[nodiscard]] std::future<void> setStatus(LocationID id, LocationStatus status);
    /// For a location that was found again at a new path, or whose bookmark was refreshed. Changes nothing at
    /// one that was removed.
    [[nodiscard]] std::future<void> updateAccess(LocationID id, std::string path, std::string scanPath,
                                                 std::optional<Bytes> bookmark);
    /// Stops tracking; what was recorded stays. A location around it takes its files over at its next check,
    /// and does not record them as added.
    [[nodiscard]] std::future<void> remove(LocationID id, UnixTime at);
    /// Deletes a location that never had a baseline; leaves any other as it is, silently. A location around
    /// it takes its files over as with remove().
    [[nodiscard]] std::future<void> forget(LocationID id);
    /// All locations ever added, removed ones included, in the order in which they were added.
    [[nodiscard]] std::future<std::vector<LocationRecord>> loadLocations();
    /// The folders that the last check could not read, by path.
    [[nodiscard]] std::future<std::vector<UnreadableFolder>> unreadableFolders(LocationID id);

    /// About `limit` (above 0) of the files that the last check saw, spread evenly over their paths.
    [[nodiscard]] std::future<InventorySample> sampleInventory(LocationID id, std::size_t limit);

    /// Runs one check, walk included, on the writer's queue; see commitCheck().
    [[nodiscard]] std::future<CheckCommit> commit(CheckRequest request);

    /// Makes the estimates of one location, walk included, on the writer's queue; see
    /// brindle::replaceEstimates().
    [[nodiscard]] std::future<EstimateTotals> replaceEstimates(EstimateRequest request);
    /// Removes all estimates of all locations, and when they were made.
    [[nodiscard]] std::future<void> clearEstimates();

    /// Whether prune(before) would delete anything and is safe; see brindle::isPruningDue().
    [[nodiscard]] std::future<bool> isPruningDue(LocalDay before, LocalDay today);
    /// Deletes the history of all days before this one; see brindle::prune().
    [[nodiscard]] std::future<void> prune(LocalDay before);
    /// Empties the write-ahead log; false when it is in use.
    [[nodiscard]] std::future<bool> checkpoint();
    /// The size of the write-ahead log as it is now, without a queue.
    [[nodiscard]] std::uintmax_t logBytes() const;

    /// Remembers that a statement was written to this path.
    [[nodiscard]] std::future<void> recordExport(std::string path, UnixTime at);
    /// The paths of the latest 500 statements, latest first.
    [[nodiscard]] std::future<std::vector<std::string>> recentExports();

    /// A day's changes, in no particular order.
    [[nodiscard]] std::future<std::vector<FileChange>> changes(LocalDay day,
                                                               std::optional<LocationID> location);
    /// The changes of every day from `first` through `last`, by day, then time, then id.
    [[nodiscard]] std::future<std::vector<FileChange>> changes(LocalDay first, LocalDay last,
                                                               std::optional<LocationID> location);
    /// The `limit` largest changes that the check recorded, largest first. `day` is the check's day.
    [[nodiscard]] std::future<std::vector<FileChange>> largestChanges(const CheckCommit& check, LocalDay day,
                                                                      std::size_t limit);

    /// What the pages derive their figures from, for the `days` days (at least 1) that end with `today`.
    /// Sums up what was committed when each of its statements began: a check that commits in between may be
    /// in some figures and not yet in others.
    [[nodiscard]] std::future<HistorySnapshot> snapshot(int days, LocalDay today, Calendar calendar);
    /// What the latest check of each location saw of files whose contents are not on this disk.
    [[nodiscard]] std::future<std::unordered_map<LocationID, std::int64_t>> cloudOnlyBytes();
    /// The `limit` folders that the changes of a period are credited to, in the order of largestFirst().
    [[nodiscard]] std::future<std::vector<FolderSummary>> contributors(LocalDay first, LocalDay last,
                                                                       std::optional<LocationID> location,
                                                                       std::size_t limit);
    /// What was estimated for a period, by day, largest first.
    [[nodiscard]] std::future<std::vector<FileChange>> estimates(LocalDay first, LocalDay last,
                                                                 std::optional<LocationID> location);
    /// How many changes or estimates of a period there are.
    [[nodiscard]] std::future<ChangeCount> countChanges(LocalDay first, LocalDay last,
                                                        std::optional<LocationID> location,
                                                        ChangeSource kind);
    /// Hands the changes or the estimates of a period to `sink`, one at a time, in the order of changes() and
    /// estimates(), as they were when it began. Works in the caller's thread through a connection of its own,
    /// in memory that does not grow with their number. Throws SQLiteError, or what the sink throws.
    void streamChanges(LocalDay first, LocalDay last, const std::optional<LocationID>& location,
                       ChangeSource kind, const ChangeSink& sink) const;
    /// The folders that estimates from a day on are credited to, in no particular order.
    [[nodiscard]] std::future<std::vector<EstimatedFolder>> estimateContributors(
        LocalDay since, std::optional<LocationID> location);
    /// The samples of a volume in a period, by time.
    [[nodiscard]] std::future<std::vector<VolumeReading>> capacitySamples(std::string volumeID,
                                                                          LocalDay first, LocalDay last);

private:
    std::filesystem::path directory_;
    std::unique_ptr<DatabaseQueue> writer_;
    std::unique_ptr<DatabaseQueue> reader_;
};

}  // namespace brindle
