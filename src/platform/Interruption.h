#pragma once

#include "platform/FileDescriptor.h"

#include <functional>
#include <thread>

namespace brindle {

/// Hears the signals that ask a program to stop (SIGINT, SIGTERM, SIGHUP) while it lives. The first one calls
/// `onFirst`, on a thread of its own; a second one ends the process as if nobody had listened.
/// Made before the process starts other threads, which inherit that these signals do not reach them.
class Interruption {
public:
    explicit Interruption(std::function<void()> onFirst);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

private:
    void listen();

    std::function<void()> onFirst_;
    FileDescriptor signals_;
    FileDescriptor end_;
    std::thread thread_;
};

/// For a process about to become another program, between fork and exec: the signals that ask to stop reach
/// it as usual, which it would not inherit, and those meant for this program do not.
void becomeIndependent();

}  // namespace brindle
