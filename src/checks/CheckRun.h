#pragma once

#include "checks/Events.h"
#include "checks/LocationCheck.h"
#include "checks/Turns.h"
#include "platform/TreeReader.h"
#include "store/HistoryStore.h"

#include <memory>
#include <span>
#include <vector>

namespace brindle {

/// One run over some locations of a history, one after the other: their checks, then their estimates.
/// No failure of a location ends it. Used on one thread; made with the history's RunLock held.
class CheckRun {
public:
    /// `send` takes the events but the last, and throws nothing. All references outlive the run.
    CheckRun(HistoryStore& store, const TreeSource& trees, Turns& turns,
             std::shared_ptr<const CancellationFlag> cancellation, const EventHandler& send,
             const DayClock& clock)
        : store_(store),
          trees_(trees),
          turns_(turns),
          cancellation_(std::move(cancellation)),
          send_(send),
          clock_(clock) {}

    /// Checks the locations in this order. One that is not tracked or left out at its turn is passed over.
    void check(std::span<const LocationID> locations);

    /// Makes estimates for the checked locations that have none. A location for which that fails keeps having
    /// none, so that the next run tries again.
    void estimate();

    [[nodiscard]] const CheckRunSummary& summary() const { return summary_; }

private:
    void checkLocation(const LocationID& id);
    void estimateLocation(const LocationChecked& checked);
    void add(const LocationID& id, CheckOutcome outcome);
    [[nodiscard]] bool goesOn();

    HistoryStore& store_;
    const TreeSource& trees_;
    Turns& turns_;
    std::shared_ptr<const CancellationFlag> cancellation_;
    const EventHandler& send_;
    const DayClock& clock_;
    std::vector<LocationChecked> checked_;
    CheckRunSummary summary_;
};

}  // namespace brindle
