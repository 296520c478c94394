#include "ui/HandlerTimes.h"

#include <QEvent>
#include <QMetaEnum>
#include <QObject>
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fmt/format.h>
#include <fmt/os.h>
#include <vector>

namespace brindle {
namespace {

std::int64_t processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

HandlerTimes::Measured::Measured(HandlerTimes& times, const QObject* receiver, const QEvent* event)
    : times_(times), isStartingUp_(times.isStartingUp_) {
    if (++times_.depth_ > 1) return;
    const char* type = QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type());
    handler_ = fmt::format("{}/{}", receiver->metaObject()->className(),
                           type != nullptr ? type : std::to_string(event->type()));
    begin_ = processorTime();
}

HandlerTimes::Measured::~Measured() {
    if (--times_.depth_ > 0) return;
    const std::int64_t took = processorTime() - begin_;
    Handler& handler = (isStartingUp_ ? times_.startUp_ : times_.running_)[handler_];
    ++handler.count;
    handler.longest = std::max(handler.longest, took);
}

void HandlerTimes::write(const std::string& path) const {
    auto file = fmt::output_file(path);
    const auto print = [&file](const char* phase, const Handlers& handlers) {
        std::vector<std::pair<std::string, Handler>> byTime(handlers.begin(), handlers.end());
        std::ranges::sort(byTime,
                          [](const auto& a, const auto& b) { return a.second.longest > b.second.longest; });
        for (const auto& [name, handler] : byTime)
            file.print("{} {} {} {:.3f}\n", phase, name, handler.count,
                       static_cast<double>(handler.longest) / 1e6);
    };
    print("running", running_);
    print("start-up", startUp_);
}

}  // namespace brindle
