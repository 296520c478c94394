#include "store/HistoryStore.h"

#include "platform/CpuPriority.h"
#include "platform/PrivateFiles.h"
#include "store/CapacityReads.h"
#include "store/ChangeReads.h"
#include "store/EstimateReads.h"
#include "store/ExportLog.h"
#include "store/Locations.h"
#include "store/Retention.h"
#include "store/SQLText.h"
#include "store/SnapshotReads.h"

namespace brindle {
namespace {

constexpr const char* fileName = "History.sqlite";

}  // namespace

HistoryStore::HistoryStore(std::filesystem::path directory, const Clock& now)
    : directory_(std::move(directory)) {
    createPrivateDirectory(directory_.string());
    const std::filesystem::path file = directory_ / fileName;
    createPrivateFile(file.string());  // SQLite gives its log the mode of the database file
    // SQLite would write through links that somebody planted under the names of what it keeps beside the
    // file.
    for (const char* suffix : {"-wal", "-shm", "-journal"}) refuseLink(file.string() + suffix);
    // SQLite would open one that it may only read, and leave an index behind that nobody may write later.
    requireWritableFile(file.string());

    writer_ = std::make_unique<DatabaseQueue>(file.string(), "Brindle.history.writer");
    writer_
        ->perform([&](SQLiteConnection& db) {
            lowerCpuPriority();
            // Sorts and temporary tables of large checks spill to disk: into the user's own folder, where
            // there is room for the history, and not into a shared or a memory-backed one.
            db.execute("PRAGMA temp_store_directory = " + textLiteral(directory_.string()));
            // Both are read and written in the order of their keys, so that a few pages at a time do: larger
            // caches made checks no faster, larger pages of the temporary rows did. In KiB, and in bytes.
            db.execute(
                "PRAGMA main.cache_size = -1024; PRAGMA temp.page_size = 16384;"
                "PRAGMA temp.cache_size = -512");
            migrate(db, directory_, now);
        })
        .get();

    reader_ = std::make_unique<DatabaseQueue>(file.string(), "Brindle.history.reader");
    reader_->perform([](SQLiteConnection& db) { db.execute("PRAGMA query_only = ON"); }).get();
}

std::future<void> HistoryStore::insert(LocationRecord record) {
    return writer_->perform(
        [record = std::move(record)](SQLiteConnection& db) { insertLocation(db, record); });
}

std::future<void> HistoryStore::setStatus(LocationID id, LocationStatus status) {
    return writer_->perform(
        [id = std::move(id), status](SQLiteConnection& db) { setLocationStatus(db, id, status); });
}

std::future<void> HistoryStore::updateAccess(LocationID id, std::string path, std::string scanPath,
                                             std::optional<Bytes> bookmark) {
    return writer_->perform([id = std::move(id), path = std::move(path), scanPath = std::move(scanPath),
                             bookmark = std::move(bookmark)](SQLiteConnection& db) {
        updateLocationAccess(db, id, path, scanPath, bookmark);
    });
}

std::future<void> HistoryStore::remove(LocationID id, UnixTime at) {
    return writer_->perform([id = std::move(id), at](SQLiteConnection& db) { removeLocation(db, id, at); });
}

std::future<void> HistoryStore::forget(LocationID id) {
    return writer_->perform([id = std::move(id)](SQLiteConnection& db) { forgetLocation(db, id); });
}

std::future<std::vector<LocationRecord>> HistoryStore::loadLocations() {
    return reader_->perform([](SQLiteConnection& db) { return brindle::loadLocations(db); });
}

std::future<std::vector<UnreadableFolder>> HistoryStore::unreadableFolders(LocationID id) {
    return reader_->perform(
        [id = std::move(id)](SQLiteConnection& db) { return loadUnreadableFolders(db, id); });
}

std::future<InventorySample> HistoryStore::sampleInventory(LocationID id, std::size_t limit) {
    return reader_->perform([id = std::move(id), limit](SQLiteConnection& db) {
        return brindle::sampleInventory(db, id, limit);
    });
}

std::future<CheckCommit> HistoryStore::commit(CheckRequest request) {
    return writer_->perform(
        [request = std::move(request)](SQLiteConnection& db) { return commitCheck(db, request); });
}

std::future<EstimateTotals> HistoryStore::replaceEstimates(EstimateRequest request) {
    return writer_->perform([request = std::move(request)](SQLiteConnection& db) {
        return brindle::replaceEstimates(db, request);
    });
}

std::future<void> HistoryStore::clearEstimates() {
    return writer_->perform([](SQLiteConnection& db) { brindle::clearEstimates(db); });
}

std::future<bool> HistoryStore::isPruningDue(LocalDay before, LocalDay today) {
    return reader_->perform(
        [before, today](SQLiteConnection& db) { return brindle::isPruningDue(db, before, today); });
}

std::future<void> HistoryStore::prune(LocalDay before) {
    return writer_->perform([before](SQLiteConnection& db) { brindle::prune(db, before); });
}

std::future<bool> HistoryStore::checkpoint() {
    return writer_->perform([](SQLiteConnection& db) { return brindle::checkpoint(db); });
}

std::uintmax_t HistoryStore::logBytes() const {
    std::error_code none;
    const auto bytes = std::filesystem::file_size(directory_ / (std::string(fileName) + "-wal"), none);
    return none ? 0 : bytes;
}

std::future<void> HistoryStore::recordExport(std::string path, UnixTime at) {
    return writer_->perform(
        [path = std::move(path), at](SQLiteConnection& db) { brindle::recordExport(db, path, at); });
}

std::future<std::vector<std::string>> HistoryStore::recentExports() {
    return reader_->perform([](SQLiteConnection& db) { return brindle::recentExports(db); });
}

std::future<std::vector<FileChange>> HistoryStore::changes(LocalDay day, std::optional<LocationID> location) {
    return reader_->perform(
        [day, location = std::move(location)](SQLiteConnection& db) { return changesOn(db, day, location); });
}

std::future<std::vector<FileChange>> HistoryStore::changes(LocalDay first, LocalDay last,
                                                           std::optional<LocationID> location) {
    return reader_->perform([first, last, location = std::move(location)](SQLiteConnection& db) {
        return changesBetween(db, first, last, location);
    });
}

std::future<std::vector<FileChange>> HistoryStore::largestChanges(const CheckCommit& check, LocalDay day,
                                                                  std::size_t limit) {
    return reader_->perform([id = check.locationID, at = check.finishedAt, day, limit](SQLiteConnection& db) {
        return largestChangesOfCheck(db, id, day, at, limit);
    });
}

std::future<HistorySnapshot> HistoryStore::snapshot(int days, LocalDay today, Calendar calendar) {
    return reader_->perform([days, today, calendar = std::move(calendar)](SQLiteConnection& db) {
        return loadSnapshot(db, days, today, calendar);
    });
}

std::future<std::unordered_map<LocationID, std::int64_t>> HistoryStore::cloudOnlyBytes() {
    return reader_->perform([](SQLiteConnection& db) { return loadCloudOnlyBytes(db); });
}

std::future<std::vector<FolderSummary>> HistoryStore::contributors(LocalDay first, LocalDay last,
                                                                   std::optional<LocationID> location,
                                                                   std::size_t limit) {
    return reader_->perform([first, last, location = std::move(location), limit](SQLiteConnection& db) {
        return largestFirst(contributorsBetween(db, first, last, location), limit);
    });
}

std::future<std::vector<FileChange>> HistoryStore::estimates(LocalDay first, LocalDay last,
                                                             std::optional<LocationID> location) {
    return reader_->perform([first, last, location = std::move(location)](SQLiteConnection& db) {
        return estimatesBetween(db, first, last, location);
    });
}

std::future<ChangeCount> HistoryStore::countChanges(LocalDay first, LocalDay last,
                                                    std::optional<LocationID> location, ChangeSource kind) {
    return reader_->perform([first, last, location = std::move(location), kind](SQLiteConnection& db) {
        return kind == ChangeSource::measured ? countChangesBetween(db, first, last, location)
                                              : countEstimatesBetween(db, first, last, location);
    });
}

void HistoryStore::streamChanges(LocalDay first, LocalDay last, const std::optional<LocationID>& location,
                                 ChangeSource kind, const ChangeSink& sink) const {
    SQLiteConnection db((directory_ / fileName).string(), SQLiteConnection::Access::read);
    // What has to be sorted, a day at a time, mostly fits in here; the rest of a larger one goes to the disk.
    db.execute("PRAGMA main.cache_size = -8192");
    if (kind == ChangeSource::measured)
        eachChangeBetween(db, first, last, location, sink);
    else
        eachEstimateBetween(db, first, last, location, sink);
}

std::future<std::vector<EstimatedFolder>> HistoryStore::estimateContributors(
    LocalDay since, std::optional<LocationID> location) {
    return reader_->perform([since, location = std::move(location)](SQLiteConnection& db) {
        return estimateContributorsSince(db, since, location);
    });
}

std::future<std::vector<VolumeReading>> HistoryStore::capacitySamples(std::string volumeID, LocalDay first,
                                                                      LocalDay last) {
    return reader_->perform([volumeID = std::move(volumeID), first, last](SQLiteConnection& db) {
        return readingsBetween(db, volumeID, first, last);
    });
}

}  // namespace brindle
