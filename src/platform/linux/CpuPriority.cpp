#include "platform/CpuPriority.h"

#include <sys/resource.h>

namespace brindle {

void lowerCpuPriority() {
    // On Linux this is of the calling thread alone: setpriority(2), "C library/kernel differences".
    constexpr int callingThread = 0;
    // A tenth of the share of ordinary work on a busy core: it gives way, and still comes to its end.
    constexpr int niceness = 10;
    setpriority(PRIO_PROCESS, callingThread, niceness);
}

}  // namespace brindle
