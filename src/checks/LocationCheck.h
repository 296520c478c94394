#pragma once

#include "model/Cancellation.h"
#include "model/LocationRecord.h"
#include "model/Walk.h"
#include "scan/ScanRules.h"
#include "store/HistoryStore.h"

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace brindle {

/// A location that could not be checked, for a reason that is stored as its status.
struct LocationUnavailable {
    LocationStatus status = LocationStatus::disconnected;  // or needsAccess
};

/// A location whose check failed. Its status is left as it was, so that the next run tries again.
struct CheckFailed {
    std::string sentence;
};

struct CheckStopped {};

using CheckOutcome = std::variant<CheckCommit, LocationUnavailable, CheckFailed, CheckStopped>;

/// Checks locations, each from end to end: finds its folder, walks it, commits what the walk saw.
///
/// A root that is absent, refused, on another volume than the location's, or exchanged while it was walked
/// is never committed: a drive that is away must not read as the removal of everything on it.
class LocationCheck {
public:
    /// `uncounted` names what no walk of this run counts. `store` outlives the check.
    LocationCheck(HistoryStore& store, std::vector<UncountedCandidate> uncounted)
        : store_(store), uncounted_(std::move(uncounted)) {}

    /// Waits for the check, which runs on the store's writer queue. `progress` is called from the walk's
    /// thread.
    /// Throws: what storing a status throws; everything else is in the outcome.
    [[nodiscard]] CheckOutcome run(const LocationRecord& record,
                                   const std::shared_ptr<const CancellationFlag>& cancellation,
                                   const ProgressSink& progress);

private:
    [[nodiscard]] CheckOutcome unavailable(const LocationRecord& record, LocationStatus status);

    HistoryStore& store_;
    std::vector<UncountedCandidate> uncounted_;
};

}  // namespace brindle
