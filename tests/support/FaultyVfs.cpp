#include "support/FaultyVfs.h"

#include <csignal>
#include <sqlite3.h>

namespace brindle {

FaultyVfs::FaultyVfs() : disk_([this](const DiskCall&) { return verdict(); }) {}

void FaultyVfs::arm(const DiskFault& next) {
    const std::scoped_lock guard(lock_);
    fault_ = next;
    calls_ = 0;
    hasFailed_ = false;
}

int FaultyVfs::calls() const {
    const std::scoped_lock guard(lock_);
    return calls_;
}

bool FaultyVfs::hasFailed() const {
    const std::scoped_lock guard(lock_);
    return hasFailed_;
}

int FaultyVfs::verdict() {
    const std::scoped_lock guard(lock_);
    ++calls_;
    const bool isDue = calls_ == fault_.failAt;
    const bool goesOn = fault_.effect == DiskFault::Effect::failOnward && calls_ > fault_.failAt;
    if (fault_.failAt == 0 || !(isDue || goesOn)) return SQLITE_OK;
    if (fault_.effect == DiskFault::Effect::kill) raise(SIGKILL);
    hasFailed_ = true;
    return fault_.code;
}

}  // namespace brindle
