#include "app/desktop/SystemClockAlarm.h"

#include <utility>

namespace brindle {

SystemClockAlarm::SystemClockAlarm() : isOver_(timer_.descriptor(), QSocketNotifier::Read) {
    isOver_.setEnabled(false);
    QObject::connect(&isOver_, &QSocketNotifier::activated, &isOver_, [this] {
        isOver_.setEnabled(false);
        std::exchange(callback_, {})();
    });
}

void SystemClockAlarm::callAt(UnixTime time, std::function<void()> callback) {
    callback_ = std::move(callback);
    timer_.waitFor(time);
    isOver_.setEnabled(true);
}

}  // namespace brindle
