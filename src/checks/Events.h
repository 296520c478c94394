#pragma once

#include "model/Estimates.h"
#include "model/Location.h"
#include "model/LocationID.h"
#include "model/Walk.h"
#include "store/Commit.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace brindle {

/// What became of a run. A location stands in at most one of `committed`, `unavailable` and `failures`; one
/// that was no longer tracked at its turn stands in none of them.
struct CheckRunSummary {
    std::vector<CheckCommit> committed;                // in the order of the run
    std::map<LocationID, LocationStatus> unavailable;  // disconnected or needsAccess
    std::map<LocationID, std::string> failures;        // why, in a sentence for the user
    std::map<LocationID, EstimateTotals> estimated;    // those that got estimates in this run
    bool cancelled = false;                            // it was stopped before its end
    /// Why no location was checked at all: another program checks this history. A sentence for the user.
    std::optional<std::string> refused;

    bool operator==(const CheckRunSummary&) const = default;
};

/// The check of a location begins.
struct LocationStarted {
    LocationID location;
    std::string name;

    bool operator==(const LocationStarted&) const = default;
};

/// How far the walk of a location is.
struct LocationProgress {
    LocationID location;
    std::string name;
    ScanProgress progress;

    bool operator==(const LocationProgress&) const = default;
};

/// The walk for a location's estimates begins.
struct LocationEstimating {
    LocationID location;
    std::string name;

    bool operator==(const LocationEstimating&) const = default;
};

/// The run is over: always its last event.
struct RunFinished {
    CheckRunSummary summary;

    bool operator==(const RunFinished&) const = default;
};

using CoordinatorEvent = std::variant<LocationStarted, LocationProgress, LocationEstimating, RunFinished>;

/// Takes the events of a run, one at a time.
using EventHandler = std::function<void(const CoordinatorEvent&)>;

}  // namespace brindle
