#pragma once

#include "model/Cancellation.h"
#include "model/DayClock.h"
#include "model/LocationRecord.h"
#include "model/Walk.h"
#include "platform/TreeReader.h"
#include "scan/LocationAccess.h"
#include "scan/ScanRules.h"
#include "store/HistoryStore.h"

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace brindle {

/// A committed check, and what it walked.
struct LocationChecked {
    CheckCommit commit;
    std::string scanPath;
    ScanRules rules;
};

/// A location that could not be checked, for a reason that is stored as its status.
struct LocationUnavailable {
    LocationStatus status = LocationStatus::disconnected;  // or needsAccess
};

/// A location whose check failed. Its status is left as it was, so that the next run tries again.
struct CheckFailed {
    std::string sentence;
};

struct CheckStopped {};

/// A location that was removed or forgotten during its check: nothing was written for it.
struct NoLongerTracked {};

using CheckOutcome =
    std::variant<LocationChecked, LocationUnavailable, CheckFailed, CheckStopped, NoLongerTracked>;

/// Checks locations, each from end to end: finds its folder, walks it, commits what the walk saw.
///
/// A root that is absent, refused, on another volume than the location's, or exchanged while it was walked
/// is never committed: a drive that is away must not read as the removal of everything on it.
class LocationCheck {
public:
    /// Names what no walk counts. Asked on the walk's thread as the walk begins, when the check has the
    /// writer's queue: no location can come or go any more until it is committed.
    using Uncounted = std::function<std::vector<UncountedCandidate>()>;

    /// `store` and `trees` outlive the check.
    LocationCheck(HistoryStore& store, const TreeSource& trees, Uncounted uncounted, DayClock clock = {})
        : store_(store), trees_(trees), uncounted_(std::move(uncounted)), clock_(std::move(clock)) {}

    /// Waits for the check, which runs on the store's writer queue. `progress` is called meanwhile, on the
    /// calling thread: with the walk's latest word, the last one always included.
    /// Throws: SQLiteError when the location cannot be read or its status or new path not be stored; what
    ///         `progress` throws, once the check is over. Everything else is in the outcome.
    [[nodiscard]] CheckOutcome run(const LocationRecord& record,
                                   const std::shared_ptr<const CancellationFlag>& cancellation,
                                   const ProgressSink& progress);

private:
    [[nodiscard]] CheckOutcome check(const LocationRecord& record,
                                     const std::shared_ptr<const CancellationFlag>& cancellation,
                                     const ProgressSink& progress);
    [[nodiscard]] CheckOutcome unavailable(const LocationRecord& record, LocationStatus status);

    HistoryStore& store_;
    const TreeSource& trees_;
    Uncounted uncounted_;
    DayClock clock_;
};

/// The status that a location's access stands for: active when it is ready.
[[nodiscard]] LocationStatus statusOf(const AccessState& access);

}  // namespace brindle
