#include "checks/Coordinator.h"
#include "checks/LocationCheck.h"
#include "checks/Uncounted.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Pair;

class Check : public Coordinator {};

TEST_F(Check, ARootThatGoesAwayDuringTheWalkIsNotCommittedAndKeepsNoOtherFromIt) {
    includeAll({"root", "other"});
    run({{"root"}});
    const auto before = history.everything();
    atEnd = [&](const std::string& root) { fs::rename(root, path("beside")); };
    EXPECT_THAT(run({{"root"}}).failures,
                ElementsAre(Pair(LocationID{"root"},
                                 "The folder changed during the check. It will be checked again.")));
    EXPECT_EQ(history.everything(), before);

    fs::rename(path("beside"), path("root"));
    fs::create_directory(path("far"));
    atEnd = [&](const std::string& root) {
        if (root == path("root")) fs::rename(root, path("far/away"));
    };
    const auto summary = run({{"root"}, {"other"}});
    EXPECT_THAT(summary.unavailable, ElementsAre(Pair(LocationID{"root"}, LocationStatus::disconnected)));
    EXPECT_THAT(committedBy(summary), ElementsAre("other"));
    EXPECT_THAT(history.rows("SELECT location_id FROM inventory ORDER BY 1"), ElementsAre("other", "root"));
    EXPECT_EQ(history.record("root").status, LocationStatus::disconnected);
}

TEST_F(Check, ARenamedFolderIsFoundAgainAndItsNewPathStored) {
    include("root");
    run({{"root"}});
    fs::rename(path("root"), path("renamed"));
    for (int time = 0; time < 2; ++time) {
        const auto summary = run({{"root"}});
        ASSERT_THAT(committedBy(summary), ElementsAre("root"));
        EXPECT_EQ(summary.committed.front().totals, ChangeTotals{});
        EXPECT_EQ(history.record("root").path, path("renamed"));
    }
}

TEST_F(Check, NoFileIsTrackedTwiceAndTheHistoryIsNotNews) {
    write("outer/real/data/History.sqlite", 30);
    fs::create_directory_symlink(path("outer/real"), path("by-link"));
    includeAll({"outer/inner", "outer"});
    const auto records = history.store().loadLocations().get();
    const auto trees = makeTreeSource();
    // The history is reached by way of a symbolic link, as where the data folder was moved to a larger drive.
    LocationCheck check(history.store(), *trees,
                        [&] { return uncountedHere(path("by-link/data").string(), records); });
    for (const LocationRecord& record : records)
        ASSERT_TRUE(std::holds_alternative<LocationChecked>(
            check.run(record, std::make_shared<CancellationFlag>(), [](const ScanProgress&) {})));
    EXPECT_THAT(history.rows("SELECT location_id, rel_path FROM inventory ORDER BY 1"),
                ElementsAre("outer|a", "outer/inner|a"));
    EXPECT_THAT(history.rows("SELECT files_seen FROM scan_runs"), ElementsAre("1", "1"));
}

}  // namespace
}  // namespace brindle
