#pragma once

#include "app/Alarm.h"
#include "model/LocationID.h"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace brindle {

/// Decides when automatic checks run.
///
/// - The first at once when tracking begins, then one every interval, counted from the beginning of the last
///   check of everything, whoever asked for that. Lateness of timers does not add up.
/// - What falls due during a run is dropped.
/// - After the computer slept one, however many were slept through.
/// - A drive that was mounted has its disconnected locations checked.
/// - While paused none. What would have brought one about only refreshes statuses.
///
/// Thread: that of the alarm.
class Schedule {
public:
    /// What the schedule asks for. Each may call the schedule, and may find that there is nothing to do.
    struct Actions {
        std::function<void()> checkAll;
        std::function<void(const std::vector<LocationID>&)> checkThese;  // never none
        std::function<void()> refreshStatuses;
        std::function<std::vector<LocationID>()> disconnectedLocations;  // asked; changes nothing
    };

    /// Time on a clock that goes on while the computer sleeps and is never set.
    using Moment = std::chrono::milliseconds;
    using Interval = std::chrono::seconds;

    enum class RunOf { everything, some };

    /// Not yet begun. `alarm` outlives the schedule.
    Schedule(Alarm& alarm, std::function<Moment()> now, Actions actions, Interval interval, bool isPaused);
    ~Schedule();
    Schedule(const Schedule&) = delete;
    Schedule& operator=(const Schedule&) = delete;

    /// The user's own history is tracked from here on. Checks at once, unless a run of everything began less
    /// than an interval ago: one that has just set the baselines is the first check of tracking.
    void begin();
    /// It is no longer, for the time being.
    void end();
    /// The program is about to quit: nothing is asked for from here on.
    void shutDown();

    /// Counts from now. Above 0.
    void setInterval(Interval interval);
    /// Going on checks at once when the last check of everything is older than the interval.
    void setPaused(bool isPaused);

    /// A run begins, whoever asked for it, or is over. One that the schedule asks for may begin before its
    /// action returns.
    void runBegan(RunOf extent);
    /// Comes after the locations' new statuses are known.
    void runEnded();

    void computerWoke();
    void driveMounted();
    void driveUnmounted();

private:
    enum class Phase { idle, tracking, shutDown };

    [[nodiscard]] bool isChecking() const { return phase_ == Phase::tracking && !isPaused_; }
    void goOn();
    void catchUp();
    void tick();
    void check(Moment asOf);
    void setAlarm();
    void cancel();

    Alarm& alarm_;
    const std::function<Moment()> now_;
    const Actions actions_;
    Interval interval_;
    bool isPaused_;
    Phase phase_ = Phase::idle;
    std::optional<RunOf> running_;
    bool isAsking_ = false;  // a run of everything that begins now is the schedule's own
    std::optional<Moment>
        lastRun_;             // when the last run of everything began, or should have, had timers been exact
    Moment due_{};            // of the next one; later than lastRun_ by the interval or more
    bool owesCheck_ = false;  // after the run in progress, which does not cover everything
    bool owesReturned_ = false;  // likewise, for the drives that were mounted during it
};

}  // namespace brindle
