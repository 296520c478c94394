#pragma once

#include "model/Cancellation.h"
#include "model/LocationID.h"

#include <memory>

namespace brindle {

/// Which location of a run is being worked on, and which are left out of checks for the time being.
/// Thread: any.
class Turns {
    struct State;

public:
    /// Work on one location within a run. One at a time.
    class Turn {
    public:
        /// `run` stops the whole run.
        Turn(Turns& turns, const LocationID& location, std::shared_ptr<const CancellationFlag> run);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

        [[nodiscard]] bool isStopped() const { return cancellation_->isSet(); }
        /// Set with that of the run, and when the location is or was left out since the turn began.
        [[nodiscard]] const std::shared_ptr<CancellationFlag>& cancellation() const { return cancellation_; }

    private:
        std::shared_ptr<State> state_;
        std::shared_ptr<CancellationFlag> cancellation_;
    };

    /// A location is left out while this lives; copies are the same. May outlive the turns.
    using LeftOut = std::shared_ptr<const void>;
    [[nodiscard]] LeftOut leaveOut(const LocationID& location);

    Turns();

private:
    std::shared_ptr<State> state_;
};

}  // namespace brindle
