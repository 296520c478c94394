#include "checks/LocationCheck.h"
#include "checks/Uncounted.h"
#include "scan/LocationAccess.h"
#include "support/HookedTree.h"
#include "support/TempHistory.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class Check : public testing::Test {
protected:
    Check() { fs::create_directories(root); }

    static void write(const fs::path& file, std::size_t bytes) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << std::string(bytes, 'x');
    }

    LocationRecord include(const fs::path& path) {
        const auto existing = history.store().loadLocations().get();
        const LocationRecord record = makeCandidate(path.string(), existing, history.now).record;
        history.store().insert(record).get();
        return record;
    }

    std::vector<UncountedCandidate> uncounted(const std::string& historyDirectory) {
        return uncountedHere(historyDirectory, history.store().loadLocations().get());
    }

    /// `atEnd` happens when the last of the tree was read: the latest moment of a walk.
    CheckOutcome check(
        const LocationRecord& location, const std::function<void()>& atEnd = [] {}) {
        const LocationRecord stored = history.record(location.id.rawValue);
        const HookedTree trees([&](const std::string&) { atEnd(); });
        return LocationCheck(history.store(), trees, [this] { return uncounted(history.directory()); })
            .run(stored, cancellation, [&](const ScanProgress& progress) { words.push_back(progress); });
    }

    [[nodiscard]] std::vector<std::string> inventory() const {
        return history.rows("SELECT rel_path, size FROM inventory ORDER BY location_id, rel_path");
    }

    TempFolder folder;
    fs::path root = folder.path() / "root";
    TempHistory history;
    std::shared_ptr<CancellationFlag> cancellation = std::make_shared<CancellationFlag>();
    std::vector<ScanProgress> words;
};

TEST_F(Check, CommitsWhatIsThereWithASampleOfTheDrive) {
    write(root / "a", 10);
    const LocationRecord location = include(root);
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(check(location)));
    write(root / "b/c", 5);
    const CheckOutcome outcome = check(location);
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(outcome));
    EXPECT_EQ(std::get<LocationChecked>(outcome).commit.totals, (ChangeTotals{5, 0, 1}));
    EXPECT_THAT(inventory(), ElementsAre("a|10", "b/c|5"));
    EXPECT_EQ(words.back().filesSeen, 2);
    EXPECT_THAT(history.rows("SELECT COUNT(*), MIN(volume_id) = '" + location.volumeID +
                             "', MIN(total) >= MIN(free) FROM capacity_samples"),
                ElementsAre("2|1|1"));
}

TEST_F(Check, ARootThatGoesAwayDuringTheWalkIsNotCommitted) {
    write(root / "a", 10);
    const LocationRecord location = include(root);
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(check(location)));
    const auto before = history.everything();

    const fs::path beside = folder.path() / "beside";
    const CheckOutcome renamed = check(location, [&] { fs::rename(root, beside); });
    ASSERT_TRUE(std::holds_alternative<CheckFailed>(renamed));
    EXPECT_EQ(std::get<CheckFailed>(renamed).sentence,
              "The folder changed during the check. It will be checked again.");
    EXPECT_EQ(history.everything(), before);

    fs::rename(beside, root);
    fs::create_directories(folder.path() / "far");
    const CheckOutcome gone = check(location, [&] { fs::rename(root, folder.path() / "far/away"); });
    ASSERT_TRUE(std::holds_alternative<LocationUnavailable>(gone));
    EXPECT_THAT(inventory(), ElementsAre("a|10"));
    EXPECT_THAT(history.rows("SELECT COUNT(*) FROM scan_runs"), ElementsAre("1"));
}

TEST_F(Check, ARenamedFolderIsFoundAgainAndItsNewPathStored) {
    write(root / "a", 10);
    const LocationRecord location = include(root);
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(check(location)));
    fs::rename(root, folder.path() / "renamed");
    const CheckOutcome outcome = check(location);
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(outcome));
    EXPECT_EQ(std::get<LocationChecked>(outcome).commit.totals, ChangeTotals{});
    EXPECT_EQ(history.record(location.id.rawValue).path, folder.path() / "renamed");
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(check(location)));
}

TEST_F(Check, AMissingFolderIsDisconnectedAndComesBack) {
    write(root / "a", 10);
    const LocationRecord location = include(root);
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(check(location)));
    fs::create_directories(folder.path() / "far");
    fs::rename(root, folder.path() / "far/away");
    const CheckOutcome outcome = check(location);
    ASSERT_TRUE(std::holds_alternative<LocationUnavailable>(outcome));
    EXPECT_EQ(history.record(location.id.rawValue).status, LocationStatus::disconnected);
    EXPECT_THAT(inventory(), ElementsAre("a|10"));
    fs::rename(folder.path() / "far/away", root);
    ASSERT_TRUE(std::holds_alternative<LocationChecked>(check(location)));
    EXPECT_EQ(history.record(location.id.rawValue).status, LocationStatus::active);
}

TEST_F(Check, AStoppedCheckRecordsNothing) {
    write(root / "a", 10);
    const LocationRecord location = include(root);
    cancellation->set();
    EXPECT_TRUE(std::holds_alternative<CheckStopped>(check(location)));
    EXPECT_EQ(history.record(location.id.rawValue).baselineAt, std::nullopt);
}

TEST_F(Check, NoFileIsTrackedTwiceAndTheHistoryIsNotNews) {
    write(root / "a", 10);
    write(root / "inner/b", 20);
    write(root / "real/data/History.sqlite", 30);
    fs::create_directory_symlink(root / "real", folder.path() / "by-link");
    const LocationRecord inner = include(root / "inner");
    const LocationRecord outer = include(root);

    // The history is reached by way of a symbolic link, as where the data folder was moved to a larger drive.
    const auto trees = makeTreeSource();
    LocationCheck run(history.store(), *trees,
                      [this] { return uncounted((folder.path() / "by-link/data").string()); });
    for (const LocationRecord& location : {inner, outer})
        ASSERT_TRUE(std::holds_alternative<LocationChecked>(
            run.run(history.record(location.id.rawValue), cancellation, [](const ScanProgress&) {})));
    EXPECT_THAT(history.rows("SELECT rel_path FROM inventory ORDER BY 1"), ElementsAre("a", "b"));
    EXPECT_THAT(history.rows("SELECT files_seen FROM scan_runs ORDER BY id"), ElementsAre("1", "1"));
}

}  // namespace
}  // namespace brindle
