#include "store/StagedCommit.h"
#include "support/ChildProcess.h"
#include "support/FaultyVfs.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <gtest/gtest.h>
#include <random>

namespace brindle {
namespace {

/// Locations whose files come, go and change at random among paths that sort against intuition.
class RandomChecks {
public:
    explicit RandomChecks(std::uint64_t seed) : random_(seed) {}

    /// Changes some of the files, or once in a while all of them.
    void change(Files& files) {
        if (oneIn(20)) files.clear();
        for (std::uint64_t i = below(oneIn(10) ? 300 : 12); i > 0; --i) {
            const std::string path = randomPath();
            if (oneIn(3))
                files.erase(path);
            else
                files[path] = static_cast<std::int64_t>(below(4)) * 10;
        }
    }

    ScanReport report() {
        ScanReport report{.allocatedBytes = static_cast<std::int64_t>(below(100)),
                          .trashBytes = static_cast<std::int64_t>(below(100)),
                          .cloudOnlyBytes = static_cast<std::int64_t>(below(100))};
        while (oneIn(3)) report.unreadable.push_back({randomPath(), oneIn(2)});
        while (oneIn(6)) report.cloudOnlyFolders.push_back(randomPath());
        return report;
    }

    /// Somebody who crosses time zones and days without 24 hours, and whose clock is set back at times.
    void travel(TempHistory& history) {
        static const char* zones[] = {"Europe/Berlin",  "Pacific/Honolulu", "Pacific/Kiritimati",
                                      "America/Havana", "Asia/Kathmandu",   "Australia/Lord_Howe"};
        if (oneIn(4)) history.calendar = Calendar("en_US", zones[below(std::size(zones))]);
        const auto seconds = static_cast<double>(below(100'000));
        history.now += oneIn(6) ? -3 * seconds : seconds;
    }

    std::uint64_t below(std::uint64_t end) { return random_() % end; }
    bool oneIn(std::uint64_t chances) { return below(chances) == 0; }

private:
    std::string randomPath() {
        // Among them names before and after "/" in the order of bytes, beyond ASCII, and packages.
        static const std::vector<std::string> names = {"a",     "a-b", "a.txt", "a0",
                                                       "a\x01", "b",   "\xff",  "Z.app"};
        std::string path = names[below(names.size())];
        while (oneIn(2)) path += "/" + names[below(names.size())];
        return path;
    }

    std::mt19937_64 random_;
};

/// Runs the check in a process that is killed in place of one of its calls to the disk, if it comes so far.
void checkAndKill(TempHistory& history, const std::string& id, const Walk& walk, int call) {
    history.close();
    inChildProcess([&] {
        FaultyVfs disk;
        disk.arm({.failAt = call, .effect = DiskFault::Effect::kill});
        history.store().commit(history.request(id, walk)).get();
        history.close();
    });
}

void expectTheSameRows(std::uint64_t seed) {
    RandomChecks random(seed);
    TempHistory merged;
    TempHistory staged;
    merged.now = 1'761'350'400;  // the evening before Europe's clocks go back
    const std::vector<std::string> locations = {"one", "two"};
    std::map<std::string, Files> files;
    staged.now = merged.now;
    for (const auto& id : locations) {
        merged.include(id);
        staged.include(id);
    }
    SQLiteConnection plain(staged.file());
    plain.execute("PRAGMA temp_store = MEMORY; PRAGMA synchronous = OFF");
    for (int check = 0; check < 10; ++check) {
        SCOPED_TRACE("check " + std::to_string(check));
        const std::string& id = locations[random.below(2)];
        random.change(files[id]);
        const Walk walk = scriptedWalk(files[id], random.report());
        random.travel(merged);
        staged.now = merged.now;
        staged.calendar = merged.calendar;
        const CheckCommit told = stagedCommit(plain, staged.request(id, walk));
        const auto after = staged.everything();
        if (random.oneIn(20)) {
            staged.close();  // its threads would be in the way of a new process
            checkAndKill(merged, id, walk, 1 + static_cast<int>(random.below(25)));
            if (merged.everything() == after) continue;
        }
        ASSERT_EQ(merged.store().commit(merged.request(id, walk)).get(), told);
        ASSERT_EQ(merged.everything(), after);
    }
}

// A path never names a file and a folder at once in a real tree; here it may, since both ways must agree on
// whatever a walk reports.
TEST(CommitReference, TheMergedCommitLeavesTheSameRowsAsTheStagedOne) {
    const std::uint64_t first = testSeed();
    for (int round = 0; round < testRounds(40) && !HasFailure(); ++round) {
        const std::uint64_t seed = first + static_cast<std::uint64_t>(round);
        SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
        expectTheSameRows(seed);
    }
}

TEST(CommitReference, AWalkThatIsOutOfOrderIsRefusedAndNothingIsRecorded) {
    TempHistory history;
    history.include("home");
    history.check("home", {{"a", 1}, {"b", 2}});
    const auto before = history.everything();
    for (const std::vector<ScanEntry>& entries : {std::vector<ScanEntry>{{"b", 2, 0}, {"a", 1, 0}},
                                                  std::vector<ScanEntry>{{"a", 1, 0}, {"a", 1, 0}}}) {
        const Walk walk = [&](const EntrySink& sink) {
            sink(entries);
            return ScanReport{};
        };
        EXPECT_THROW(history.store().commit(history.request("home", walk)).get(), std::logic_error);
    }
    EXPECT_EQ(history.everything(), before);
}

}  // namespace
}  // namespace brindle
