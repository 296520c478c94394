#pragma once

namespace brindle {

/// Memory that runs out, for this program and for SQLite, in every thread. A program whose sources hold
/// ScarceMemory.cpp has its operators new replaced by ones that can fail.
class ScarceMemory {
public:
    /// No database may be open when it comes and when it goes.
    ScarceMemory();
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    /// From now on the n-th allocation fails, counted from 1, and with `onward` every later one. 0: none.
    void arm(long failAt, bool onward = false);
    void disarm() { arm(0); }

    [[nodiscard]] long allocations() const;  // since arm()
    [[nodiscard]] bool hasFailed() const { return failAt_ > 0 && allocations() >= failAt_; }

private:
    long failAt_ = 0;
};

}  // namespace brindle
