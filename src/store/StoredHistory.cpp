#include "store/StoredHistory.h"

namespace brindle {
namespace {

// The days whose texts sort before and behind those of all others.
constexpr LocalDay firstDay{.year = 0, .month = 1, .day = 1};
constexpr LocalDay lastDay{.year = 9999, .month = 12, .day = 31};

}  // namespace

StoredHistory::StoredHistory(std::shared_ptr<HistoryStore> store, Calendar calendar, Clock now, int days)
    : store_(std::move(store)), calendar_(std::move(calendar)), now_(std::move(now)), days_(days) {}

std::future<HistorySnapshot> StoredHistory::snapshot() {
    return store_->snapshot(days_, calendar_.day(now_()), calendar_);
}

std::future<std::vector<FileChange>> StoredHistory::dayChanges(LocalDay day, LocationScope scope) {
    return store_->changes(day, std::move(scope.location));
}

std::future<std::vector<FolderSummary>> StoredHistory::periodContributors(LocalDay first, LocalDay last,
                                                                          LocationScope scope,
                                                                          std::size_t limit) {
    return store_->contributors(first, last, std::move(scope.location), limit);
}

std::future<std::vector<FileChange>> StoredHistory::periodEstimates(LocalDay first, LocalDay last,
                                                                    LocationScope scope) {
    return store_->estimates(first, last, std::move(scope.location));
}

std::future<std::vector<FileChange>> StoredHistory::allEstimates(LocationScope scope) {
    return store_->estimates(firstDay, lastDay, std::move(scope.location));
}

std::future<std::vector<FileChange>> StoredHistory::periodChanges(LocalDay first, LocalDay last,
                                                                  LocationScope scope) {
    return store_->changes(first, last, std::move(scope.location));
}

std::future<std::vector<VolumeReading>> StoredHistory::capacitySamples(std::string volumeID, LocalDay first,
                                                                       LocalDay last) {
    return store_->capacitySamples(std::move(volumeID), first, last);
}

std::future<ChangeCount> StoredHistory::countChanges(LocalDay first, LocalDay last, LocationScope scope,
                                                     ChangeSource kind) {
    return store_->countChanges(first, last, std::move(scope.location), kind);
}

void StoredHistory::streamChanges(LocalDay first, LocalDay last, const LocationScope& scope,
                                  ChangeSource kind, const ChangeSink& sink) {
    store_->streamChanges(first, last, scope.location, kind, sink);
}

}  // namespace brindle
