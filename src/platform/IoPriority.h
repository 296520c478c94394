#pragma once

namespace brindle {

/// While it lives, the calling thread's disk reads give way to everybody else's. What was set before is put
/// back at the end. A system that refuses either is no error.
/// Thread: made and destroyed on the same one.
class IdleIoPriority {
public:
    IdleIoPriority();
    ~IdleIoPriority();
    IdleIoPriority(const IdleIoPriority&) = delete;
    IdleIoPriority& operator=(const IdleIoPriority&) = delete;

private:
    int previous_;  // negative: unknown, nothing to put back
};

}  // namespace brindle
