#include "checks/Coordinator.h"
#include "support/Rounds.h"

#include <atomic>
#include <gmock/gmock.h>
#include <random>
#include <set>
#include <thread>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int threadCount = 6;
constexpr int callsAThread = 40;
constexpr int lives = 2;

/// Every call of the coordinator and reads of the history at random moments, from many threads, and ends of
/// the program during a run.
class Storm : public Coordinator {
protected:
    /// One thread's calls.
    void callAtRandom(std::uint64_t threadSeed) {
        std::mt19937_64 random(threadSeed);
        std::vector<std::shared_future<CheckRunSummary>> runs;
        for (int call = 0; call < callsAThread; ++call) {
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 4000));
            const auto kind = random() % 14;
            if (kind < 5)
                runs.push_back(coordinator().run({.locations = someLocations(random)}));
            else if (kind < 7)
                coordinator().cancel();
            else if (kind == 7)
                coordinator().enableEstimates();
            else if (kind == 8)
                coordinator().disableEstimates().wait();
            else if (kind == 9)
                coordinator().refreshStatuses().wait();
            else if (kind == 10)
                write(names[random() % names.size()] + "/" + std::to_string(random() % 50), random() % 5000);
            else if (kind > 11)
                read(random());
            else if (const auto running = coordinator().running())
                running->wait();
        }
        for (const auto& run : runs) {
            const CheckRunSummary& summary = run.get();
            const std::scoped_lock guard(mutex);  // not while it waits: whoever hears events takes it too
            summaries.push_back(summary);
        }
    }

    /// One of the reads of the pages.
    void read(std::uint64_t which) {
        const Calendar calendar = Calendar::current();
        const LocalDay today = calendar.day(systemNow());
        const LocalDay first = calendar.addingDays(today, -1);
        if (which % 3 == 0)
            static_cast<void>(history.store().snapshot(30, today, calendar).get());
        else if (which % 3 == 1)
            static_cast<void>(history.store().changes(first, today, {}).get());
        else
            history.store().streamChanges(first, today, {}, ChangeSource::measured, [](const FileChange&) {});
    }

    /// Includes a folder anew and takes it away again, under the lock that a run may hold at the same time.
    void comeAndGo(std::uint64_t threadSeed) {
        std::mt19937_64 random(threadSeed);
        for (int round = 0; round < 10; ++round) {
            const RunLock lock = locks.take(RunLock::WhenTaken::refuse, CancellationFlag());
            const auto id = include("passing " + std::to_string(threadSeed) + " " + std::to_string(round));
            const auto running = coordinator().run({.locations = {id}});
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 4000));
            history.store().forget(id).get();
            history.store().remove(id, 77).get();
            running.wait();
        }
    }

    [[nodiscard]] std::vector<LocationID> someLocations(std::mt19937_64& random) const {
        std::vector<LocationID> chosen;
        for (auto count = random() % 8; count > 0; --count)
            chosen.push_back({names[random() % names.size()]});
        return chosen;
    }

    /// Between two last events there is one run: nothing of it comes after its last event, and no location is
    /// begun twice.
    void expectWholeRuns() {
        std::set<LocationID> started;
        for (const CoordinatorEvent& event : events) {
            if (const auto* begun = std::get_if<LocationStarted>(&event)) {
                EXPECT_TRUE(started.insert(begun->location).second) << begun->location.rawValue;
            } else if (const auto* walked = std::get_if<LocationProgress>(&event)) {
                EXPECT_TRUE(started.contains(walked->location));
            } else if (const auto* estimating = std::get_if<LocationEstimating>(&event)) {
                EXPECT_TRUE(started.contains(estimating->location));
            } else {
                expectSound(std::get<RunFinished>(event).summary, started);
                started.clear();
            }
        }
        EXPECT_THAT(started, IsEmpty());
    }

    static void expectSound(const CheckRunSummary& summary, const std::set<LocationID>& started) {
        EXPECT_EQ(summary.refused, std::nullopt);
        std::set<LocationID> told;
        const auto tell = [&](const LocationID& id) {
            EXPECT_TRUE(told.insert(id).second) << id.rawValue;
            EXPECT_TRUE(started.contains(id)) << id.rawValue;
        };
        for (const CheckCommit& commit : summary.committed) tell(commit.locationID);
        for (const auto& [id, status] : summary.unavailable) tell(id);
        for (const auto& [id, sentence] : summary.failures) {
            tell(id);
            ADD_FAILURE() << sentence;
        }
    }

    std::vector<std::string> names{"a", "b", "c", "d", "e"};
    std::vector<CheckRunSummary> summaries;  // that were waited for
};

TEST_F(Storm, LeavesWholeRunsAndAWholeHistory) {
    const std::uint64_t first = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(first));
    const auto all = includeAll(names);
    for (const std::string& name : names)
        for (int file = 0; file < 300; ++file) write(name + "/many/" + std::to_string(file), 7);
    run(all);
    moveBaselinesToTheFuture();
    events.clear();

    for (std::uint64_t life = 0; life < lives; ++life) {
        coordinator();  // made here, once: no thread is to make it while another does
        std::vector<std::thread> threads;
        threads.emplace_back([&] { comeAndGo(first + 100 * life); });
        for (std::uint64_t i = 1; i <= threadCount; ++i)
            threads.emplace_back([&, i, life] { callAtRandom(first + 100 * life + i); });
        for (std::thread& thread : threads) thread.join();
        const auto inProgress = coordinator().run({.locations = all});
        end();
    }

    coordinator().disableEstimates().get();
    EXPECT_EQ(value("SELECT (SELECT COUNT(*) FROM estimates), COUNT(estimated_at) FROM locations"), "0|0");
    atEnd = [](const std::string&) {};
    EXPECT_THAT(committedBy(run(all)), ElementsAre("a", "b", "c", "d", "e"));
    const auto lastRun = coordinator().run({.locations = all});
    end();

    expectWholeRuns();
    for (const CoordinatorEvent& event : events)
        if (const auto* last = std::get_if<RunFinished>(&event))
            std::erase(summaries, last->summary);  // of those who joined, too
    EXPECT_THAT(summaries, IsEmpty()) << "a summary was told that no run finished with";

    EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(value("SELECT COUNT(*) FROM locations JOIN inventory ON location_id = id "
                    "WHERE removed_at IS NOT NULL OR id LIKE 'passing%'"),
              "0");
    EXPECT_THAT(history.rows("SELECT DISTINCT status FROM locations WHERE removed_at IS NOT NULL"),
                testing::Each("paused"));
    EXPECT_EQ(value("SELECT COUNT(*) FROM scan_runs WHERE location_id NOT IN (SELECT id FROM locations)"),
              "0");
    EXPECT_EQ(value("SELECT (SELECT SUM(delta) FROM observations), "
                    "(SELECT SUM(added - freed) FROM daily_totals)"),
              value("SELECT SUM(tracked_bytes) - 5 * (10 + 300 * 7), SUM(tracked_bytes) - 5 * (10 + 300 * 7) "
                    "FROM locations WHERE removed_at IS NULL"));
}

}  // namespace
}  // namespace brindle
