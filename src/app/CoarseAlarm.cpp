#include "app/CoarseAlarm.h"

#include <utility>

namespace brindle {

CoarseAlarm::CoarseAlarm() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::CoarseTimer);
    // The callback may set the alarm again, and with that replace itself.
    timer_.callOnTimeout([this] { std::exchange(callback_, {})(); });
}

void CoarseAlarm::callIn(std::chrono::milliseconds time, std::function<void()> callback) {
    callback_ = std::move(callback);
    timer_.start(time);
}

}  // namespace brindle
