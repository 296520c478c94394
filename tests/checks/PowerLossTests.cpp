#include "checks/Maintenance.h"
#include "support/RecordedDisk.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <algorithm>
#include <fmt/format.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// Folders with long names, so that what is written passes the size at which SQLite brings its log into the
/// file by itself.
Files someFiles(int count, int seed) {
    Files files;
    for (int i = 0; i < count; ++i)
        if (i % 7 != seed)
            files[fmt::format("{:f<600}/file {:04}", i % 9, i)] = i * (i % 5 == seed ? 2 : 1) + 1;
    return files;
}

/// A life of a history, and what it held at each moment.
class PowerLoss : public testing::Test {
protected:
    /// What the history holds once so many steps were done.
    struct State {
        std::size_t steps = 0;
        bool isSafe = false;  // whatever happens to the power from here on
        std::vector<std::string> rows;
    };

    void note(bool isSafe = false) { states.push_back({disk.steps(), isSafe, history.everything()}); }

    void checkAndKeepUp(const std::string& id, const Files& files) {
        history.now += 3600;
        history.check(id, files);
        note();
        maintain(
            history.store(), [this] { return history.now; }, history.calendar);
        note(true);
    }

    void live() {
        static_cast<void>(history.store());
        note();
        for (const auto* id : {"home", "away"}) {
            history.include(id);
            note();
        }
        checkAndKeepUp("home", someFiles(300, 1));
        checkAndKeepUp("away", someFiles(8000, 2));
        checkAndKeepUp("home", someFiles(400, 3));
        history.store().setStatus({"away"}, LocationStatus::paused).get();
        note();
        checkAndKeepUp("away", someFiles(30, 1));
        history.now += 100 * 86'400;
        checkAndKeepUp("home", someFiles(350, 2));
        history.now += 86'400;
        checkAndKeepUp("home", someFiles(360, 2));  // prunes all that was before the pause
        history.store().remove({"away"}, history.now).get();
        note();
        history.close();
        note(true);
        checkAndKeepUp("home", someFiles(200, 5));
        history.close();
    }

    /// Among the states from the last safe one before the power loss to the one that was being written.
    void expectOneOfThem(const std::vector<std::string>& rows, std::size_t steps) const {
        const auto next =
            std::ranges::find_if(states, [&](const State& state) { return state.steps > steps; });
        auto first = next;
        while (first != states.begin() && !(--first)->isSafe) {
        }
        const auto last = next == states.end() ? next : next + 1;
        EXPECT_TRUE(std::any_of(first, last, [&](const State& state) { return state.rows == rows; }));
    }

    TempHistory history;
    RecordedDisk disk{history.directory()};
    std::vector<State> states;
};

TEST_F(PowerLoss, LeavesTheHistoryOfTheLastCheckpointOrALaterOne) {
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    live();
    const std::size_t begin = states.front().steps;

    const int rounds = testRounds(60);
    int lost = 0;
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        const std::size_t steps = begin + random() % (disk.steps() - begin + 1);
        SCOPED_TRACE(fmt::format("round {}, after step {} of {}", round, steps, disk.steps()));
        TempHistory left;
        fs::create_directory(left.directory());
        lost += disk.playPowerLoss(steps, random, left.directory());
        static_cast<void>(left.store());
        EXPECT_EQ(left.rows("PRAGMA integrity_check"), std::vector<std::string>{"ok"});
        expectOneOfThem(left.everything(), steps);
        left.now = history.now;
        if (!left.store().loadLocations().get().empty()) left.check("home", someFiles(50, 4));
    }
    reportRounds(rounds, lost);
    EXPECT_GT(lost, rounds);
}

}  // namespace
}  // namespace brindle
