#pragma once

#include "model/FolderSummary.h"
#include "model/HistorySource.h"
#include "model/Packages.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace brindle {

/// A history of whatever a test puts into it, in the order in which it was put.
class FixedHistory final : public HistorySource {
public:
    HistorySnapshot known;
    std::vector<FileChange> changes;  // measured
    std::vector<FileChange> estimates;
    std::vector<VolumeReading> samples;
    bool isBroken = false;                // every list throws
    std::function<void()> beforeReading;  // called for every list of changes, on the thread that waits for it

    std::future<HistorySnapshot> snapshot() override { return ready(known); }
    std::future<std::vector<FileChange>> dayChanges(LocalDay day, LocationScope scope) override {
        return periodChanges(day, day, std::move(scope));
    }
    std::future<std::vector<FileChange>> periodChanges(LocalDay first, LocalDay last,
                                                       LocationScope scope) override {
        if (beforeReading) beforeReading();
        return ready(chosen(changes, first, last, scope));
    }
    std::future<std::vector<FolderSummary>> periodContributors(LocalDay first, LocalDay last,
                                                               LocationScope scope,
                                                               std::size_t limit) override {
        return ready(
            largestFirst(groupedByFolder(chosen(changes, first, last, scope), contributorDepth), limit));
    }
    std::future<std::vector<FileChange>> periodEstimates(LocalDay first, LocalDay last,
                                                         LocationScope scope) override {
        return ready(chosen(estimates, first, last, scope));
    }
    std::future<std::vector<FileChange>> allEstimates(LocationScope /*scope*/) override {
        return ready(estimates);
    }
    std::future<std::vector<VolumeReading>> capacitySamples(std::string volumeID, LocalDay /*first*/,
                                                            LocalDay /*last*/) override {
        std::vector<VolumeReading> found;
        std::ranges::copy_if(samples, std::back_inserter(found),
                             [&](const VolumeReading& sample) { return sample.id == volumeID; });
        return ready(std::move(found));
    }
    void streamChanges(LocalDay first, LocalDay last, const LocationScope& scope, ChangeSource kind,
                       const ChangeSink& sink) override {
        if (beforeReading) beforeReading();
        const auto& all = kind == ChangeSource::measured ? changes : estimates;
        for (const FileChange& change : chosen(all, first, last, scope)) sink(change);
    }

    /// Puts a tracked location on a drive.
    TrackedLocation& include(const std::string& id, const std::string& name, const LocalDay& since) {
        return known.locations.emplace_back(TrackedLocation{.id = {id},
                                                            .name = name,
                                                            .path = "/home/ann/" + name,
                                                            .volumeID = "drive",
                                                            .trackingStart = since});
    }

    /// Records a check of a location that found one change in a folder.
    void record(const std::string& id, const LocalDay& day, const FolderPath& folder, std::int64_t bytes) {
        known.checkedDays[{id}].insert(day);
        if (bytes == 0) return;
        known.dayTotals[{id}][day].add(bytes, 1);
        changes.push_back({.id = static_cast<std::int64_t>(changes.size()) + 1,
                           .locationID = {id},
                           .folder = folder,
                           .name = "file",
                           .action = bytes > 0 ? ChangeAction::added : ChangeAction::removed,
                           .byteDelta = bytes,
                           .day = day});
    }

private:
    template <class Value>
    std::future<Value> ready(Value value) const {
        std::promise<Value> promise;
        if (isBroken && !std::is_same_v<Value, HistorySnapshot>)
            promise.set_exception(std::make_exception_ptr(std::runtime_error("The disk is on fire.")));
        else
            promise.set_value(std::move(value));
        return promise.get_future();
    }

    static std::vector<FileChange> chosen(const std::vector<FileChange>& all, const LocalDay& first,
                                          const LocalDay& last, const LocationScope& scope) {
        std::vector<FileChange> found;
        std::ranges::copy_if(all, std::back_inserter(found), [&](const FileChange& change) {
            return first <= change.day && change.day <= last && scope.holds(change.locationID);
        });
        return found;
    }
};

}  // namespace brindle
