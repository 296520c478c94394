#include "app/CoarseAlarm.h"
#include "app/PrivateBus.h"
#include "app/Schedule.h"

#include <algorithm>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

namespace brindle {
namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr seconds week = 24h * 7;

/// A computer on which time passes by the second, and a program that checks when its schedule asks for it.
class Computer : public Alarm {
public:
    explicit Computer(Schedule::Interval interval = 5min, bool isPaused = false)
        : schedule(
              *this, [this] { return Schedule::Moment(now_); },
              {.checkAll =
                   [this] {
                       log_.push_back(fmt::format("all {}", now_.count()));
                       run(Schedule::RunOf::everything);
                   },
               .checkThese =
                   [this](const std::vector<LocationID>& ids) {
                       log_.push_back(fmt::format("{} {}", ids.front().rawValue, now_.count()));
                       run(Schedule::RunOf::some);
                   },
               .refreshStatuses = [this] { log_.push_back(fmt::format("statuses {}", now_.count())); },
               .disconnectedLocations = [this] { return away; }},
              interval, isPaused) {}

    void callIn(std::chrono::milliseconds time, std::function<void()> callback) override {
        alarmAt_ = Schedule::Moment(now_) + time + lateness(time);
        callback_ = std::move(callback);
    }
    void cancel() override { callback_ = nullptr; }

    /// Starts a run, as a user may; it takes `runLength`.
    void run(Schedule::RunOf extent) {
        runEnd_ = now_ + runLength();
        schedule.runBegan(extent);
    }

    void passSecond() {
        now_ += 1s;
        if (runEnd_ && now_ >= *runEnd_) {
            runEnd_.reset();
            ++runsOver_;
            schedule.runEnded();
        }
        if (event) std::exchange(event, nullptr)();
        while (callback_ && alarmAt_ <= now_) std::exchange(callback_, nullptr)();
    }
    void pass(seconds time) {
        for (; time > 0s; time -= 1s) passSecond();
    }
    /// Timers do not count the time asleep.
    void sleep(seconds time) {
        now_ += time;
        alarmAt_ += time;
        if (runEnd_) *runEnd_ += time;
    }

    [[nodiscard]] seconds now() const { return now_; }
    [[nodiscard]] bool isRunning() const { return runEnd_.has_value(); }
    [[nodiscard]] int runsOver() const { return runsOver_; }
    /// What the schedule asked for since the last call, and the second in which it did.
    [[nodiscard]] std::vector<std::string> log() { return std::exchange(log_, {}); }

    std::function<seconds()> runLength = [] { return 10s; };
    std::function<std::chrono::milliseconds(std::chrono::milliseconds)> lateness = [](auto) { return 0ms; };
    std::vector<LocationID> away;
    std::function<void()> event;  // happens in the next second, before the alarm

private:
    seconds now_{};
    std::optional<seconds> runEnd_;
    int runsOver_ = 0;
    Schedule::Moment alarmAt_{};
    std::function<void()> callback_;
    std::vector<std::string> log_;

public:
    Schedule schedule;
};

TEST(Schedule, TheFirstCheckIsThatOfTrackingUnlessOneHasJustRun) {
    const struct {
        const char* name;
        seconds sinceRun;  // how long before tracking a run of everything began; 0: there was none
        seconds length;
        std::vector<std::string> checks;  // in the first ten minutes
    } cases[] = {
        {"never checked", 0s, 0s, {"all 0", "all 300"}},
        {"baselines set just now", 100s, 60s, {"all 300", "all 600"}},
        {"baselines set long ago", 400s, 60s, {"all 400", "all 700"}},
        {"setting baselines goes on", 100s, 350s, {"all 600"}},
    };
    for (const auto& [name, sinceRun, length, checks] : cases) {
        Computer computer;
        if (sinceRun > 0s) {
            computer.runLength = [length = length] { return length; };
            computer.run(Schedule::RunOf::everything);
            computer.runLength = [] { return 10s; };
            computer.pass(sinceRun);
        }
        EXPECT_THAT(computer.log(), IsEmpty()) << name;
        computer.schedule.begin();
        computer.pass(599s);
        EXPECT_EQ(computer.log(), checks) << name;
    }
}

// Timers come up to a twentieth late or early; four weeks of them have as many checks as intervals.
TEST(Schedule, LatenessDoesNotAddUpAndNothingComesEarly) {
    std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed,cert-msc51-cpp)
    std::uniform_int_distribution<int> percent(-5, 5);
    Computer computer(5min);
    computer.lateness = [&](std::chrono::milliseconds time) { return time * percent(random) / 100; };
    computer.schedule.begin();
    computer.pass(4 * week - 1s);
    const auto checks = computer.log();
    ASSERT_EQ(checks.size(), 4U * 7 * 24 * 12);
    for (std::size_t index = 0; index < checks.size(); ++index) {
        const auto late = seconds(std::stoll(checks[index].substr(4))) - 300s * index;
        ASSERT_GE(late, 0s) << checks[index];
        ASSERT_LE(late, 16s) << checks[index];
    }
}

TEST(Schedule, AfterASleepThereIsOneCheckHoweverLongItWas) {
    for (const seconds slept : {40s, seconds(8h), seconds(3 * week)}) {
        for (const bool isTold : {true, false}) {
            Computer computer(5min);
            computer.schedule.begin();
            computer.pass(100s);
            (void)computer.log();
            computer.sleep(slept);
            const seconds woke = computer.now();
            if (isTold) computer.schedule.computerWoke();
            computer.pass(550s);
            // When nobody tells, the tick comes with what was left of its time.
            const seconds first = woke + (isTold ? 0s : 200s);
            EXPECT_THAT(computer.log(), ElementsAre(fmt::format("all {}", first.count()),
                                                    fmt::format("all {}", (first + 300s).count())))
                << slept.count() << isTold;
        }
    }
}

TEST(Schedule, AWakeDuringARunIsServedByThatRunOrAfterIt) {
    for (const auto extent : {Schedule::RunOf::everything, Schedule::RunOf::some}) {
        Computer computer(60min);
        computer.schedule.begin();
        computer.pass(100s);
        (void)computer.log();
        computer.run(extent);
        computer.schedule.computerWoke();
        computer.schedule.computerWoke();
        computer.pass(100s);
        if (extent == Schedule::RunOf::everything)
            EXPECT_THAT(computer.log(), IsEmpty());
        else
            EXPECT_THAT(computer.log(), ElementsAre("all 110"));
    }
}

TEST(Schedule, PausesAndIntervalsTakeEffectAtOnce) {
    using Steps = std::map<int, std::function<void(Computer&)>>;  // by the second; the first check is at 0
    const auto pause = [](Computer& computer) { computer.schedule.setPaused(true); };
    const auto resume = [](Computer& computer) { computer.schedule.setPaused(false); };
    const auto every = [](seconds interval) {
        return [interval](Computer& computer) { computer.schedule.setInterval(interval); };
    };
    const auto check = [](Computer& computer) { computer.run(Schedule::RunOf::everything); };
    const auto wake = [](Computer& computer) { computer.schedule.computerWoke(); };
    const auto longRuns = [](Computer& computer) { computer.runLength = [] { return 320s; }; };
    const struct {
        const char* name;
        Steps steps;
        std::vector<std::string> asked;  // after the first check, in 1000 seconds
    } cases[] = {
        {"nothing", {}, {"all 300", "all 600", "all 900"}},
        {"resumed before it was due", {{100, pause}, {200, resume}}, {"all 300", "all 600", "all 900"}},
        {"resumed later", {{100, pause}, {400, resume}}, {"all 400", "all 700", "all 1000"}},
        {"paused for good", {{299, pause}}, {}},
        {"paused twice",
         {{100, pause}, {101, pause}, {200, resume}, {201, resume}},
         {"all 300", "all 600", "all 900"}},
        {"woken while paused", {{100, pause}, {200, wake}}, {"statuses 200"}},
        {"a longer interval counts from now", {{250, every(10min)}}, {"all 850"}},
        {"a shorter one too", {{299, every(60min)}, {550, every(4min)}}, {"all 790"}},
        {"the same one changes nothing", {{100, every(5min)}}, {"all 300", "all 600", "all 900"}},
        {"the last check is old by a new interval",
         {{100, pause}, {150, every(1min)}, {160, resume}},
         {"all 160", "all 220", "all 280", "all 340", "all 400", "all 460", "all 520", "all 580", "all 640",
          "all 700", "all 760", "all 820", "all 880", "all 940", "all 1000"}},
        {"a check by hand counts", {{200, check}}, {"all 500", "all 800"}},
        {"a tick during a run is dropped", {{200, longRuns}}, {"all 300", "all 900"}},
        {"resumed during a run of everything",
         {{200, longRuns}, {310, pause}, {615, resume}},
         {"all 300", "all 900"}},
    };
    for (const auto& [name, steps, asked] : cases) {
        Computer computer(5min);
        computer.schedule.begin();
        (void)computer.log();
        while (computer.now() < 1000s) {
            const auto step = steps.find(static_cast<int>(computer.now().count()) + 1);
            if (step != steps.end()) computer.event = [&] { step->second(computer); };
            computer.passSecond();
        }
        EXPECT_EQ(computer.log(), asked) << name;
    }
}

TEST(Schedule, AMountedDriveHasItsLocationsCheckedAndAnUnmountOnlyTheirStatuses) {
    Computer computer(60min);
    computer.away = {LocationID{"photos"}};
    computer.schedule.driveMounted();
    computer.schedule.driveUnmounted();
    EXPECT_THAT(computer.log(), IsEmpty()) << "nothing is tracked yet";

    computer.schedule.begin();
    computer.schedule.driveMounted();
    computer.schedule.driveMounted();
    computer.pass(20s);
    EXPECT_THAT(computer.log(), ElementsAre("all 0", "photos 10")) << "once, after the run that was going on";

    computer.schedule.driveUnmounted();
    computer.schedule.driveMounted();
    computer.schedule.setPaused(true);
    computer.pass(20s);
    EXPECT_THAT(computer.log(), ElementsAre("statuses 20", "photos 20"));
    computer.schedule.driveUnmounted();
    computer.schedule.driveMounted();
    EXPECT_THAT(computer.log(), ElementsAre("statuses 40", "statuses 40")) << "while paused";

    computer.schedule.setPaused(false);
    computer.away.clear();
    computer.schedule.driveMounted();
    EXPECT_THAT(computer.log(), ElementsAre("statuses 40")) << "no location is known to have been away";
}

TEST(Schedule, NothingIsAskedForOutsideTrackingOrOnceShuttingDown) {
    for (const bool isForGood : {false, true}) {
        Computer computer;
        computer.away = {LocationID{"photos"}};
        computer.schedule.begin();
        computer.schedule.driveMounted();
        (void)computer.log();
        isForGood ? computer.schedule.shutDown() : computer.schedule.end();
        computer.schedule.computerWoke();
        computer.schedule.driveMounted();
        computer.schedule.driveUnmounted();
        computer.schedule.setInterval(15min);
        computer.schedule.setPaused(true);
        computer.schedule.setPaused(false);
        computer.pass(1200s);
        EXPECT_THAT(computer.log(), IsEmpty());
        computer.schedule.begin();
        if (isForGood)
            EXPECT_THAT(computer.log(), IsEmpty());
        else
            EXPECT_THAT(computer.log(), ElementsAre("all 1200"));
    }
}

/// What a schedule has to do, told without timers: looked at in every second.
struct Rules {
    seconds interval;
    bool isPaused = false;
    std::optional<Schedule::RunOf> running;
    bool owesCheck = false;
    seconds lastRun{};
    seconds due{};
    int checks = 0;  // asked for

    void begin(seconds at) {
        running = Schedule::RunOf::everything;
        lastRun = at;
        due = at + interval;
    }
    void runEnded(seconds now) {
        running.reset();
        if (std::exchange(owesCheck, false)) want(now);
    }
    void want(seconds now) {
        owesCheck = running == Schedule::RunOf::some;
        if (running) return;
        ++checks;
        begin(now);
    }
    void pause(seconds now) {
        isPaused = !isPaused;
        owesCheck = false;
        if (!isPaused && now - lastRun >= interval) want(now);
    }
    void setInterval(seconds now, seconds changed) {
        if (changed != interval) due = now + changed;
        interval = changed;
    }
    void secondPassed(seconds now) {
        if (isPaused || now < due) return;
        const seconds at = now - due <= interval / 10 ? due : now;
        due = at + interval;
        if (running) return;
        ++checks;
        begin(at);
    }
};

// Two months of wakes, pauses, new intervals, drives and checks by hand, at random; some runs are longer than
// the interval.
TEST(Schedule, DoesWhatTheRulesSayWhateverHappens) {
    std::mt19937 random(2026);  // NOLINT(bugprone-random-generator-seed,cert-msc51-cpp)
    const auto number = [&random](int last) { return std::uniform_int_distribution<int>(0, last)(random); };
    Computer computer(5min);
    computer.runLength = [&] { return seconds(1 + (number(9) == 0 ? number(1200) : number(40))); };
    computer.away = {LocationID{"photos"}};
    Rules rules{.interval = 5min};
    computer.schedule.begin();
    rules.want(0s);

    int checks = 0;
    while (computer.now() < 8 * week) {
        const int runsOver = computer.runsOver();
        computer.event = [&] {
            const seconds now = computer.now();
            if (computer.runsOver() != runsOver) rules.runEnded(now);
            if (number(400) != 0) return;
            switch (number(4)) {
                case 0:
                    rules.pause(now);
                    computer.schedule.setPaused(rules.isPaused);
                    break;
                case 1: {
                    const seconds interval = 5min * (1 + number(3));
                    rules.setInterval(now, interval);
                    computer.schedule.setInterval(interval);
                    break;
                }
                case 2:
                    if (computer.isRunning()) break;
                    rules.begin(now);
                    computer.run(Schedule::RunOf::everything);
                    break;
                case 3:
                    if (computer.isRunning() || rules.isPaused) break;
                    rules.running = Schedule::RunOf::some;
                    computer.schedule.driveMounted();
                    break;
                default:
                    if (!rules.isPaused) rules.want(now);
                    computer.schedule.computerWoke();
            }
        };
        computer.passSecond();
        rules.secondPassed(computer.now());
        const auto log = computer.log();
        checks += static_cast<int>(
            std::ranges::count_if(log, [](const auto& line) { return line.starts_with("all"); }));
        ASSERT_EQ(checks, rules.checks) << computer.now().count();
    }
    EXPECT_GT(checks, 3000);
}

TEST(CoarseAlarm, ComesOnceForTheLastTimeItWasSetTo) {
    CoarseAlarm alarm;
    int calls = 0;
    alarm.callIn(1ms, [&] { calls += 100; });
    alarm.callIn(2ms, [&] {
        if (++calls == 1) alarm.callIn(2ms, [&] { calls += 10; });
    });
    EXPECT_TRUE(eventually([&] { return calls == 11; })) << calls;
    alarm.callIn(0ms, [&] { calls = 0; });
    alarm.cancel();
    CoarseAlarm later;
    bool isOver = false;
    later.callIn(10ms, [&] { isOver = true; });
    EXPECT_TRUE(eventually([&] { return isOver; }));
    EXPECT_EQ(calls, 11);
}

}  // namespace
}  // namespace brindle
