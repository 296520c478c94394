#include "platform/IoPriority.h"

#include <linux/ioprio.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace brindle {
namespace {

constexpr int callingThread = 0;

}  // namespace

IdleIoPriority::IdleIoPriority()
    : previous_(static_cast<int>(syscall(SYS_ioprio_get, IOPRIO_WHO_PROCESS, callingThread))) {
    if (previous_ >= 0)
        syscall(SYS_ioprio_set, IOPRIO_WHO_PROCESS, callingThread, IOPRIO_PRIO_VALUE(IOPRIO_CLASS_IDLE, 0));
}

IdleIoPriority::~IdleIoPriority() {
    if (previous_ >= 0) syscall(SYS_ioprio_set, IOPRIO_WHO_PROCESS, callingThread, previous_);
}

}  // namespace brindle
