#include "app/Schedule.h"

#include <algorithm>
#include <utility>

namespace brindle {

Schedule::Schedule(Alarm& alarm, std::function<Moment()> now, Actions actions, Interval interval,
                   bool isPaused)
    : alarm_(alarm),
      now_(std::move(now)),
      actions_(std::move(actions)),
      interval_(interval),
      isPaused_(isPaused) {}

Schedule::~Schedule() {
    alarm_.cancel();
}

void Schedule::begin() {
    if (phase_ != Phase::idle) return;
    phase_ = Phase::tracking;
    if (!isPaused_) goOn();
}

void Schedule::end() {
    if (phase_ != Phase::tracking) return;
    phase_ = Phase::idle;
    cancel();
}

void Schedule::shutDown() {
    phase_ = Phase::shutDown;
    cancel();
}

void Schedule::setInterval(Interval interval) {
    if (interval == interval_) return;
    interval_ = interval;
    due_ = now_() + interval;
    if (isChecking()) setAlarm();
}

void Schedule::setPaused(bool isPaused) {
    if (isPaused == isPaused_) return;
    isPaused_ = isPaused;
    if (phase_ != Phase::tracking) return;
    if (!isPaused) return goOn();
    alarm_.cancel();
    owesCheck_ = false;
}

void Schedule::runBegan(RunOf extent) {
    running_ = extent;
    // A run of the schedule's own counts from when it was due, so that lateness does not add up.
    if (extent == RunOf::some || isAsking_) return;
    lastRun_ = now_();
    due_ = *lastRun_ + interval_;
    if (isChecking()) setAlarm();
}

void Schedule::runEnded() {
    running_.reset();
    const bool owesReturned = std::exchange(owesReturned_, false);
    if (std::exchange(owesCheck_, false)) return check(now_());
    if (owesReturned) driveMounted();
}

void Schedule::computerWoke() {
    if (phase_ != Phase::tracking) return;
    if (isPaused_) return actions_.refreshStatuses();
    catchUp();
}

void Schedule::driveMounted() {
    if (phase_ != Phase::tracking) return;
    if (isPaused_) return actions_.refreshStatuses();
    if (running_) {
        // The run may be past the drive's locations, and no second one runs beside it.
        owesReturned_ = true;
        return;
    }
    const auto returned = actions_.disconnectedLocations();
    returned.empty() ? actions_.refreshStatuses() : actions_.checkThese(returned);
}

void Schedule::driveUnmounted() {
    if (phase_ == Phase::tracking) actions_.refreshStatuses();
}

void Schedule::goOn() {
    if (!lastRun_ || now_() - *lastRun_ >= interval_) return catchUp();
    setAlarm();
}

void Schedule::catchUp() {
    if (!running_) return check(now_());
    // A run of everything that goes on now is the check that is wanted.
    owesCheck_ = running_ == RunOf::some;
    setAlarm();
}

void Schedule::tick() {
    const Moment now = now_();
    if (now < due_) return setAlarm();
    // Later than any timer is, the computer slept and nobody said so: ticks are counted anew.
    const Moment asOf = now - due_ <= Moment(interval_) / 10 ? due_ : now;
    if (!running_) return check(asOf);
    due_ = asOf + interval_;
    setAlarm();
}

void Schedule::check(Moment asOf) {
    lastRun_ = asOf;
    due_ = asOf + interval_;
    setAlarm();
    isAsking_ = true;
    actions_.checkAll();
    isAsking_ = false;
}

void Schedule::setAlarm() {
    alarm_.callIn(std::max(due_ - now_(), Moment(0)), [this] { tick(); });
}

void Schedule::cancel() {
    alarm_.cancel();
    owesCheck_ = false;
    owesReturned_ = false;
}

}  // namespace brindle
