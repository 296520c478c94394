#include "platform/TimeSinceBoot.h"

#include <time.h>

namespace brindle {

std::chrono::milliseconds timeSinceBoot() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::seconds(time.tv_sec) +
                                                                 std::chrono::nanoseconds(time.tv_nsec));
}

}  // namespace brindle
