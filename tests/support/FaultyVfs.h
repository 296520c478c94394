#pragma once

#include "support/WatchedDisk.h"

#include <mutex>

namespace brindle {

/// A fault of the disk that comes at the n-th open, write, truncation, sync or deletion, counted from 1 over
/// all files of SQLite.
struct DiskFault {
    enum class Effect {
        failOnce,    // the call gives `code`, later ones work again
        failOnward,  // the call and all later ones give `code`: a disk that is full or gone
        kill         // SIGKILL in place of the call
    };

    int failAt = 0;  // 0: never
    int code = 0;    // SQLITE_FULL, SQLITE_IOERR, …
    Effect effect = Effect::failOnce;
};

/// A disk that fails while it lives, for every connection opened meanwhile. One at a time in a process;
/// faults may be set from any thread.
class FaultyVfs {
public:
    FaultyVfs();

    /// Counts from 1 again, with this fault ahead.
    void arm(const DiskFault& fault);
    void disarm() { arm({}); }

    /// The calls counted since arm().
    [[nodiscard]] int calls() const;
    [[nodiscard]] bool hasFailed() const;

private:
    int verdict();

    mutable std::mutex lock_;
    DiskFault fault_;
    int calls_ = 0;
    bool hasFailed_ = false;
    WatchedDisk disk_;
};

}  // namespace brindle
