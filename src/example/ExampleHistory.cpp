#include "example/ExampleHistory.h"

#include "model/Packages.h"

#include <algorithm>
#include <ranges>
#include <span>

namespace brindle {
namespace {

template <class Value>
std::future<Value> ready(Value value) {
    std::promise<Value> promise;
    promise.set_value(std::move(value));
    return promise.get_future();
}

/// The part of a list by day that lies in the period.
std::span<const FileChange> inPeriod(const std::vector<FileChange>& changes, const LocalDay& first,
                                     const LocalDay& last) {
    if (last < first) return {};
    const auto begin = std::ranges::lower_bound(changes, first, {}, &FileChange::day);
    const auto end = std::ranges::upper_bound(begin, changes.end(), last, {}, &FileChange::day);
    return {begin, end};
}

std::vector<FileChange> inScope(std::span<const FileChange> changes, const LocationScope& scope) {
    std::vector<FileChange> found;
    std::ranges::copy_if(changes, std::back_inserter(found),
                         [&scope](const FileChange& change) { return scope.holds(change.locationID); });
    return found;
}

}  // namespace

ExampleHistory::ExampleHistory(const Calendar& calendar, UnixTime now, std::uint64_t /*seed*/)
    : calendar_(calendar) {
    snapshot_ = {.isExample = true, .today = calendar.day(now)};
    const LocationID home{"example.home"};
    snapshot_.locations.push_back({.id = home,
                                   .name = "Home",
                                   .path = "/Users/robin",
                                   .volumeID = "example.volume.macintosh-hd",
                                   .trackedBytes = 412'000'000'000,
                                   .lastCheck = now,
                                   .trackingStart = snapshot_.today});
    changes_ = {{.id = 1,
                 .locationID = home,
                 .folder = {"Documents", "Finance"},
                 .name = "statement-07.pdf",
                 .byteDelta = 312'400,
                 .observedAt = now,
                 .day = snapshot_.today}};
    for (const FileChange& change : changes_) snapshot_.dayTotals[home][change.day].add(change);
    snapshot_.checkedDays[home].insert(snapshot_.today);
    snapshot_.trackedTotals[home][snapshot_.today] = snapshot_.locations.front().trackedBytes;
}

std::future<HistorySnapshot> ExampleHistory::snapshot() {
    return ready(snapshot_);
}

std::future<std::vector<FileChange>> ExampleHistory::dayChanges(LocalDay day, LocationScope scope) {
    return periodChanges(day, day, std::move(scope));
}

std::future<std::vector<FolderSummary>> ExampleHistory::periodContributors(LocalDay first, LocalDay last,
                                                                           LocationScope scope,
                                                                           std::size_t limit) {
    const auto changes = inScope(inPeriod(changes_, first, last), scope);
    return ready(largestFirst(groupedByFolder(changes, contributorDepth), limit));
}

std::future<std::vector<FileChange>> ExampleHistory::periodEstimates(LocalDay first, LocalDay last,
                                                                     LocationScope scope) {
    return ready(inScope(inPeriod(estimates_, first, last), scope));
}

std::future<std::vector<FileChange>> ExampleHistory::allEstimates(LocationScope scope) {
    return ready(inScope(estimates_, scope));
}

std::future<std::vector<FileChange>> ExampleHistory::periodChanges(LocalDay first, LocalDay last,
                                                                   LocationScope scope) {
    return ready(inScope(inPeriod(changes_, first, last), scope));
}

std::future<std::vector<VolumeReading>> ExampleHistory::capacitySamples(std::string volumeID, LocalDay first,
                                                                        LocalDay last) {
    std::vector<VolumeReading> found;
    if (const auto samples = samples_.find(volumeID); samples != samples_.end())
        for (const VolumeReading& reading : samples->second)
            if (const LocalDay day = calendar_.day(reading.readAt); first <= day && day <= last)
                found.push_back(reading);
    return ready(std::move(found));
}

void ExampleHistory::streamChanges(LocalDay first, LocalDay last, const LocationScope& scope,
                                   ChangeSource kind, const ChangeSink& sink) {
    for (const FileChange& change :
         inPeriod(kind == ChangeSource::measured ? changes_ : estimates_, first, last))
        if (scope.holds(change.locationID)) sink(change);
}

}  // namespace brindle
