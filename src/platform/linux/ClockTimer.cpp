#include "platform/ClockTimer.h"

#include <algorithm>
#include <cerrno>
#include <sys/timerfd.h>
#include <system_error>

namespace brindle {

ClockTimer::ClockTimer() : timer_(timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {
    if (!timer_) throw std::system_error(errno, std::generic_category());
}

void ClockTimer::waitFor(UnixTime at) {
    itimerspec when{};
    // Nothing but zeros would stop the timer.
    when.it_value.tv_sec = std::max<time_t>(static_cast<time_t>(at), 1);
    // Whole seconds: a wait for a moment within one ends after it, never before.
    if (static_cast<UnixTime>(when.it_value.tv_sec) < at) ++when.it_value.tv_sec;
    while (timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &when, nullptr) != 0) {
        // The clock was set just now; the time to wait for is still the same.
        if (errno != ECANCELED) throw std::system_error(errno, std::generic_category());
    }
}

}  // namespace brindle
