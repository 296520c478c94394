#include "checks/CheckRun.h"

#include "checks/EstimatePass.h"
#include "checks/Failures.h"
#include "checks/TrackedLocations.h"
#include "checks/Uncounted.h"

#include <set>

namespace brindle {

void CheckRun::check(std::span<const LocationID> locations) {
    std::set<LocationID> seen;
    for (const LocationID& id : locations) {
        if (!goesOn()) return;
        if (!seen.insert(id).second) continue;
        try {
            checkLocation(id);
        } catch (const std::exception& error) {
            summary_.failures[id] = failureSentence(error, store_.directory().string());
        }
    }
}

void CheckRun::checkLocation(const LocationID& id) {
    // Begun before the record is read: who changes that has the location left out meanwhile.
    const Turns::Turn turn(turns_, id, cancellation_);
    const auto record = trackedLocation(store_, id);
    if (!record || turn.isStopped()) return static_cast<void>(goesOn());
    send_(LocationStarted{.location = id, .name = record->name});
    const auto uncounted = [this] {
        return uncountedHere(store_.directory().string(), trackedLocations(store_));
    };
    LocationCheck check(store_, trees_, uncounted, clock_);
    add(id, check.run(*record, turn.cancellation(), [&](const ScanProgress& progress) {
        send_(LocationProgress{.location = id, .name = record->name, .progress = progress});
    }));
}

void CheckRun::add(const LocationID& id, CheckOutcome outcome) {
    if (auto* checked = std::get_if<LocationChecked>(&outcome)) {
        summary_.committed.push_back(checked->commit);
        checked_.push_back(std::move(*checked));
    } else if (const auto* unavailable = std::get_if<LocationUnavailable>(&outcome)) {
        summary_.unavailable[id] = unavailable->status;
    } else if (const auto* failed = std::get_if<CheckFailed>(&outcome)) {
        summary_.failures[id] = failed->sentence;
    } else if (std::holds_alternative<CheckStopped>(outcome)) {
        static_cast<void>(goesOn());
    }
}

void CheckRun::estimate() {
    for (const LocationChecked& checked : checked_) {
        try {
            estimateLocation(checked);
        } catch (const Cancelled&) {
            static_cast<void>(goesOn());
        } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): its check stands, and that counts
        }
        if (summary_.cancelled) return;
    }
}

void CheckRun::estimateLocation(const LocationChecked& checked) {
    const LocationID& id = checked.commit.locationID;
    const Turns::Turn turn(turns_, id, cancellation_);
    const auto record = trackedLocation(store_, id);
    if (!record || record->estimatedAt || !goesOn() || turn.isStopped()) return;
    send_(LocationEstimating{.location = id, .name = record->name});
    summary_.estimated[id] = makeEstimates(store_, {.record = *record,
                                                    .scanPath = checked.scanPath,
                                                    .rules = checked.rules,
                                                    .cancellation = turn.cancellation(),
                                                    .now = clock_.now,
                                                    .calendar = clock_.calendar()});
}

bool CheckRun::goesOn() {
    if (cancellation_->isSet()) summary_.cancelled = true;
    return !summary_.cancelled;
}

}  // namespace brindle
