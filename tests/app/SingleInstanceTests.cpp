#include "app/PrivateBus.h"
#include "app/desktop/SingleInstance.h"

#include <atomic>
#include <barrier>
#include <future>
#include <gtest/gtest.h>
#include <thread>

namespace brindle {
namespace {

using namespace std::chrono_literals;
using Start = SingleInstance::Start;

/// What becomes of a start elsewhere, while this program goes on.
std::future<Start> startElsewhere(const QDBusConnection& bus, const QString& token = {},
                                  const QString& action = {}) {
    return std::async(std::launch::async, [=] { return SingleInstance(bus).begin(token, action); });
}

bool isReady(const std::future<Start>& start) {
    return start.wait_for(0s) == std::future_status::ready;
}

TEST(SingleInstance, ALaterStartHandsItsWishToTheFirst) {
    PrivateBus bus;
    SingleInstance first(bus.connect());
    QStringList wishes;
    QObject::connect(&first, &SingleInstance::showWindowRequested,
                     [&](const QString& token) { wishes += "show " + token; });
    QObject::connect(&first, &SingleInstance::actionRequested,
                     [&](const QString& action, const QString& token) { wishes += action + " " + token; });
    EXPECT_EQ(first.begin({}), Start::first);
    const struct {
        const char* token;
        const char* action;
    } starts[] = {{"", ""}, {"one", ""}, {"", "mini-window"}, {"two", "check-now"}};
    for (const auto& [token, action] : starts) {
        auto later = startElsewhere(bus.connect(), token, action);
        EXPECT_TRUE(eventually([&] { return isReady(later); }));
        EXPECT_EQ(later.get(), Start::elsewhere);
    }
    EXPECT_EQ(wishes, (QStringList{"show ", "show one", "mini-window ", "check-now two"}));
    EXPECT_EQ(SingleInstance(bus.connect()).begin({}, {}, 100ms), Start::noAnswer)
        << "nobody runs an event loop";
}

TEST(SingleInstance, AStartDuringAQuitWaitsForItsEnd) {
    PrivateBus bus;
    auto first = std::make_unique<SingleInstance>(bus.connect());
    EXPECT_EQ(first->begin({}), Start::first);
    bool isShown = false;
    QObject::connect(first.get(), &SingleInstance::showWindowRequested, [&] { isShown = true; });
    first->quit();
    auto later = startElsewhere(bus.connect());
    EXPECT_FALSE(later.wait_for(200ms) == std::future_status::ready);
    first.reset();
    EXPECT_TRUE(eventually([&] { return isReady(later); }));
    EXPECT_EQ(later.get(), Start::first);
    EXPECT_FALSE(isShown);
}

TEST(SingleInstance, OfSimultaneousStartsOneIsFirst) {
    constexpr int programs = 6;
    PrivateBus bus;
    for (int round = 0; round < 5; ++round) {
        std::barrier start(programs);
        std::atomic<int> decided = 0;
        std::atomic<int> firsts = 0;
        std::atomic<int> others = 0;
        std::vector<std::jthread> threads;
        for (int number = 0; number < programs; ++number)
            threads.emplace_back([&, connection = bus.connect()] {
                SingleInstance instance(connection);
                start.arrive_and_wait();
                const Start result = instance.begin({});
                firsts += result == Start::first ? 1 : 0;
                others += result == Start::elsewhere ? 1 : 0;
                ++decided;
                if (result == Start::first) (void)eventually([&] { return decided == programs; });
            });
        threads.clear();
        EXPECT_EQ(firsts, 1);
        EXPECT_EQ(others, programs - 1);
    }
}

TEST(SingleInstance, WithoutABusEveryStartIsTheFirst) {
    EXPECT_EQ(SingleInstance(QDBusConnection("no bus")).begin({}), Start::first);
}

}  // namespace
}  // namespace brindle
