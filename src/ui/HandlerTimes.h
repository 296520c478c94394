#pragma once

#include <cstdint>
#include <map>
#include <string>

class QEvent;
class QObject;

namespace brindle {

/// How long the main thread works on each kind of event, in processor time: what a user feels as a window
/// that does not answer. Start-up, in which there is nothing to answer with yet, is kept apart. Kept only
/// where BRINDLE_HANDLER_TIMES is defined, in builds that are measured or debugged. Thread: main.
class HandlerTimes {
public:
    /// Measures from here to the end of its life what handling this event costs; events that are handled
    /// within another are part of it.
    class Measured {
    public:
        Measured(HandlerTimes& times, const QObject* receiver, const QEvent* event);
        ~Measured();
        Measured(const Measured&) = delete;
        Measured& operator=(const Measured&) = delete;

    private:
        HandlerTimes& times_;
        bool isStartingUp_;  // as it begins
        std::string handler_;
        std::int64_t begin_ = 0;  // nanoseconds of processor time
    };

    /// What begins from here on is no part of start-up.
    void endStartUp() { isStartingUp_ = false; }

    /// Lines of "PHASE HANDLER COUNT LONGEST-MS", where the phase is "running" or "start-up"; of each phase
    /// the longest first. Throws std::system_error.
    void write(const std::string& path) const;

private:
    struct Handler {
        std::int64_t count = 0;
        std::int64_t longest = 0;  // nanoseconds
    };

    using Handlers = std::map<std::string, Handler>;

    Handlers startUp_;
    Handlers running_;
    bool isStartingUp_ = true;
    int depth_ = 0;
};

}  // namespace brindle
