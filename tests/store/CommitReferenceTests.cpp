#include "store/StagedCommit.h"
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

void expectTheSameRows(std::uint64_t seed) {
    TempHistory merged;
    TempHistory staged;
    RandomChecks random(seed);
    const std::vector<std::string> locations = {"one", "two"};
    std::map<std::string, Files> files;
    for (const auto& id : locations) {
        merged.include(id);
        staged.include(id);
    }
    SQLiteConnection plain(staged.file());
    for (int check = 0; check < 6; ++check) {
        SCOPED_TRACE("check " + std::to_string(check));
        const std::string& id = locations[random.below(2)];
        random.change(files[id]);
        const Walk walk = scriptedWalk(files[id], random.report());
        merged.now = staged.now += static_cast<double>(random.below(100'000));
        merged.store().commit(merged.request(id, walk)).get();
        stagedCommit(plain, staged.request(id, walk));
        ASSERT_EQ(merged.everything(), staged.everything());
    }
}

// A path never names a file and a folder at once in a real tree; here it may, since both ways must agree on
// whatever a walk reports.
TEST(CommitReference, TheMergedCommitLeavesTheSameRowsAsTheStagedOne) {
    const std::uint64_t first = testSeed();
    for (int round = 0; round < testRounds(30) && !testing::Test::HasFailure(); ++round) {
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
