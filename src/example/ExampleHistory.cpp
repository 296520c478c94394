#include "example/ExampleHistory.h"

#include "example/ExampleDays.h"
#include "model/Packages.h"
#include "model/PlatformText.h"

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

ExampleHistory::ExampleHistory(const Calendar& calendar, UnixTime now, std::uint64_t seed)
    : calendar_(calendar) {
    ExampleDays days = exampleDays(calendar, now, seed);
    changes_ = std::move(days.changes);
    estimates_ = std::move(days.estimates);
    snapshot_ = {.isExample = true, .today = days.today};
    add({.id = locationOf(Place::home), .name = "Home", .path = platformText::exampleHome}, days.places[0]);
    add({.id = locationOf(Place::studio),
         .name = "Studio SSD",
         .path = "/Volumes/Studio SSD",
         .kind = LocationKind::volume},
        days.places[1]);
    for (const FileChange& change : changes_) snapshot_.dayTotals[change.locationID][change.day].add(change);
    for (const FileChange& estimate : estimates_)
        snapshot_.estimates[estimate.locationID][estimate.day] +=
            EstimateTotals{estimate.byteDelta, estimate.fileCount};
}

void ExampleHistory::add(TrackedLocation location, PlaceHistory& found) {
    const VolumeReading& drive = found.samples.back();
    location.volumeID = drive.id;
    location.trackedBytes = found.trackedBytes.rbegin()->second;
    location.lastCheck = found.lastCheck;
    location.trackingStart = found.start;
    records_.push_back({.id = location.id,
                        .name = location.name,
                        .path = location.path,
                        .scanPath = location.path,
                        .kind = location.kind,
                        .volumeID = drive.id,
                        .volumeName = drive.name,
                        .caseSensitive = false,
                        .addedAt = found.baselineAt,
                        .baselineAt = found.baselineAt,
                        .lastCheckAt = found.lastCheck,
                        .trackedBytes = location.trackedBytes,
                        .estimatedAt = found.baselineAt});
    for (const auto& [day, bytes] : found.trackedBytes) snapshot_.checkedDays[location.id].insert(day);
    snapshot_.partialDays[location.id].insert(found.partialDays.begin(), found.partialDays.end());
    snapshot_.trackedTotals[location.id] = std::move(found.trackedBytes);
    snapshot_.volumes.push_back(drive);
    snapshot_.breakdowns[drive.id] = found.breakdown;
    samples_[drive.id] = std::move(found.samples);
    snapshot_.locations.push_back(std::move(location));
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
