#include "support/Rounds.h"
#include "support/ScarceMemory.h"
#include "support/TempHistory.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

Files files(int seed) {
    Files all;
    for (int i = 0; i < 12; ++i)
        if (i % 5 != seed) all[fmt::format("folder{}/a file with a name {:03}", i % 3, i)] = i * seed + 1;
    return all;
}

const LocalDay firstDay{2026, 3, 1};
const LocalDay lastDay{2026, 3, 7};

struct MemoryWork {
    const char* name;
    void (*run)(TempHistory&);
};

const MemoryWork memoryWorks[] = {
    {"Open",
     [](TempHistory& history) {
         history.close();
         static_cast<void>(history.store());
     }},
    {"Include", [](TempHistory& history) { history.include("another"); }},
    {"FirstCheck", [](TempHistory& history) { history.check("new", files(1)); }},
    {"Check",
     [](TempHistory& history) {
         history.check("home", files(2), {.unreadable = {{"a", true}}});
     }},
    {"Estimates",
     [](TempHistory& history) {
         static_cast<void>(
             history.store()
                 .replaceEstimates({.locationID = {"home"},
                                    .walk =
                                        [](const EstimateGroupSink& sink) {
                                            const EstimateRow group{firstDay, "folder", "", {7, 2}};
                                            sink(std::span(&group, 1));
                                            return std::vector<EstimateRow>{group};
                                        },
                                    .now = [&] { return history.now; }})
                 .get());
     }},
    {"Prune",
     [](TempHistory& history) {
         history.store().prune({2026, 3, 8}).get();
     }},
    {"Remove", [](TempHistory& history) { history.store().remove({"home"}, history.now).get(); }},
    {"Snapshot",
     [](TempHistory& history) {
         static_cast<void>(history.store().snapshot(7, lastDay, history.calendar).get());
     }},
    {"Changes",
     [](TempHistory& history) {
         static_cast<void>(history.store().changes(firstDay, lastDay, {}).get());
         static_cast<void>(history.store().contributors(firstDay, lastDay, {}, 5).get());
         history.store().streamChanges(firstDay, lastDay, {}, ChangeSource::measured,
                                       [](const FileChange&) {});
     }},
};

/// A history that is opened anew as often as its work is done.
class Attempts {
public:
    explicit Attempts(const MemoryWork& work) : work_(work) {
        begin();
        before_ = history().everything();
        work.run(history());
        after_ = history().everything();
        begin();
    }

    /// Does the work while the n-th allocation fails. Gives whether it came to that.
    bool attempt(ScarceMemory& memory, long n, bool onward) {
        bool hasThrown = false;
        memory.arm(n, onward);
        try {
            work_.run(history());
        } catch (const std::exception&) {
            hasThrown = true;
        }
        const bool hasFailed = memory.hasFailed();
        memory.disarm();
        const auto now = history().everything();
        // What failed may have been the answer only.
        EXPECT_TRUE(now == after_ || (hasThrown && now == before_));
        failures += hasThrown ? 1 : 0;
        if (now != before_ || !hasFailed) begin();
        return hasFailed;
    }

    int failures = 0;

private:
    [[nodiscard]] TempHistory& history() { return *history_; }

    void begin() {
        history_ = std::make_unique<TempHistory>();
        history().include("home");
        history().include("new");
        history().check("home", files(3));
        history().now += 1;
        history().check("home", files(1));
        history().now += 1;
    }

    const MemoryWork& work_;
    std::unique_ptr<TempHistory> history_;
    std::vector<std::string> before_;
    std::vector<std::string> after_;
};

class ShortOfMemory : public testing::TestWithParam<MemoryWork> {};

// Fails the n-th allocation, or that and all later ones, until the work is done before it. The next attempt
// is made with the connections that have failed.
TEST_P(ShortOfMemory, LosesNothingAndTheNextTryWorks) {
    // A few of them every day, every one when there is time.
    const long longestStride = areTestsLong() ? 1 : 40;
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    std::uniform_int_distribution stride(1L, longestStride);

    ScarceMemory memory;
    Attempts attempts(GetParam());
    int rounds = 0;
    for (const bool onward : {false, true}) {
        for (long n = 1; !HasFailure(); n += stride(random), ++rounds) {
            SCOPED_TRACE(fmt::format("allocation {}{}", n, onward ? " and all later ones" : ""));
            if (!attempts.attempt(memory, n, onward)) break;
        }
    }
    reportRounds(rounds, attempts.failures);
    EXPECT_GT(attempts.failures, 5);
}

INSTANTIATE_TEST_SUITE_P(Memory, ShortOfMemory, testing::ValuesIn(memoryWorks),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace brindle
