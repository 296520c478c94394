#include "app/DayWatch.h"
#include "app/PrivateBus.h"
#include "app/desktop/SystemClockAlarm.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace brindle {
namespace {

constexpr UnixTime day = 86400;
constexpr UnixTime minute = 60;

/// A clock that goes from alarm to alarm.
class SimulatedClock : public ClockAlarm {
public:
    void callAt(UnixTime time, std::function<void()> callback) override {
        alarm_ = time;
        callback_ = std::move(callback);
    }
    void passUntil(UnixTime end) {
        while (alarm_ <= end) {
            now = std::max(now, alarm_);
            ring();
        }
        now = end;
    }
    void set(UnixTime time) {
        now = time;
        ring();
    }

    UnixTime now = 0;
    int rings = 0;

private:
    void ring() {
        ++rings;
        std::exchange(callback_, nullptr)();
    }

    UnixTime alarm_ = 0;
    std::function<void()> callback_;
};

using Changes = std::vector<std::pair<UnixTime, std::string>>;  // when it became which day

/// A watch, and what it told.
struct Watched {
    explicit Watched(const char* zone, UnixTime now)
        : calendar("en_US", zone),
          watch((clock.now = now, clock), [this] { return clock.now; }, [this] { return calendar; },
                [this] { changes.emplace_back(clock.now, calendar.day(clock.now).text()); }) {}

    SimulatedClock clock;
    Calendar calendar;
    Changes changes;
    DayWatch watch;
};

// Weeks around changes of the clocks, and midnights that were skipped or came twice, against a look in every
// minute.
TEST(DayWatch, TellsEveryDayAsItBeginsAndSleepsInBetween) {
    const struct {
        const char* zone;
        LocalDay from;
    } cases[] = {
        {"Europe/Berlin", {2026, 3, 16}},
        {"Europe/Berlin", {2026, 10, 12}},
        {"America/Sao_Paulo", {2018, 10, 22}},
        {"America/Havana", {2026, 10, 19}},
        {"Pacific/Apia", {2011, 12, 19}},
        {"America/Asuncion", {2023, 3, 13}},
        {"UTC", {2024, 2, 19}},
    };
    for (const auto& [zone, from] : cases) {
        SCOPED_TRACE(zone + from.text());
        const Calendar calendar("en_US", zone);
        const UnixTime begin = calendar.time(from, 15);
        Watched watched(zone, begin);
        watched.clock.passUntil(begin + 28 * day);

        Changes expected;
        LocalDay today = from;
        for (UnixTime time = begin; time <= begin + 28 * day; time += minute)
            if (std::exchange(today, calendar.day(time)) != calendar.day(time))
                expected.emplace_back(time, calendar.day(time).text());
        EXPECT_EQ(watched.changes, expected);
        EXPECT_LE(watched.clock.rings, 30);
    }
}

TEST(DayWatch, FollowsAClockAndAZoneThatAreSet) {
    const Calendar berlin("en_US", "Europe/Berlin");
    const UnixTime evening = berlin.time({2026, 5, 9}, 22);
    Watched watched("Europe/Berlin", evening);
    watched.clock.set(evening + 60);
    EXPECT_TRUE(watched.changes.empty()) << "still the same day";
    watched.clock.set(evening + 3 * day);
    watched.clock.set(evening - day);
    EXPECT_EQ(watched.changes, (Changes{{evening + 3 * day, "2026-05-12"}, {evening - day, "2026-05-08"}}));

    watched.changes.clear();
    watched.calendar = Calendar("en_US", "Asia/Tokyo");
    watched.watch.look();
    EXPECT_EQ(watched.changes, (Changes{{evening - day, "2026-05-09"}}));
    watched.clock.passUntil(evening);
    EXPECT_EQ(watched.changes.back(),
              (std::pair{watched.calendar.time({2026, 5, 10}), std::string("2026-05-10")}));
}

TEST(SystemClockAlarm, ComesInTheEventLoopForTheLastTimeItWasSetTo) {
    SystemClockAlarm alarm;
    int calls = 0;
    const UnixTime begin = systemNow();
    alarm.callAt(begin - 100, [&] { calls += 100; });
    alarm.callAt(begin + 0.1, [&] {
        if (++calls == 1) alarm.callAt(begin - 100, [&] { calls += 10; });
    });
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(eventually([&] { return calls == 11; })) << calls;
    EXPECT_GE(systemNow(), begin + 0.1);
}

}  // namespace
}  // namespace brindle
