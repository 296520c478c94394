#include "platform/IoPriority.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace brindle {
namespace {

// As ioprio_set(2) gives them. Some versions of the kernel's own header are no C++.
constexpr int ofProcess = 1;
constexpr int idleClass = 3;
constexpr int classShift = 13;

constexpr int callingThread = 0;

}  // namespace

IdleIoPriority::IdleIoPriority()
    : previous_(static_cast<int>(syscall(SYS_ioprio_get, ofProcess, callingThread))) {
    if (previous_ >= 0) syscall(SYS_ioprio_set, ofProcess, callingThread, idleClass << classShift);
}

IdleIoPriority::~IdleIoPriority() {
    if (previous_ >= 0) syscall(SYS_ioprio_set, ofProcess, callingThread, previous_);
}

}  // namespace brindle
