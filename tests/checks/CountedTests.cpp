#include "checks/Coordinator.h"
#include "checks/LocationCheck.h"
#include "checks/TrackedLocations.h"
#include "checks/Uncounted.h"

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// What is counted changes, and the files do not.
class Counted : public Coordinator {
protected:
    /// Checks every location with the history where it is now. Gives what was recorded, which is nothing.
    ChangeTotals checkAll(const std::string& historyFolder = "history") {
        const auto records = trackedLocations(history.store());
        const auto trees = makeTreeSource();
        LocationCheck check(history.store(), *trees,
                            [&] { return uncountedHere(path(historyFolder).string(), records); });
        ChangeTotals totals;
        for (const LocationRecord& record : records) {
            const auto outcome =
                check.run(record, std::make_shared<CancellationFlag>(), [](const ScanProgress&) {});
            totals += std::get<LocationChecked>(outcome).commit.totals;
        }
        return totals;
    }

    [[nodiscard]] std::string tracked() const {
        return value("SELECT SUM(tracked_bytes) FROM locations WHERE removed_at IS NULL");
    }
    [[nodiscard]] std::string recorded() const { return value("SELECT COUNT(*) FROM observations"); }
};

TEST_F(Counted, ALocationInsideThatIsNoLongerTrackedIsTakenOver) {
    includeAll({"outer", "outer/inner"});
    write("outer/inner/large", 5000);
    checkAll();
    EXPECT_EQ(tracked(), "5020");
    history.store().remove({"outer/inner"}, 77).get();
    for (int time = 0; time < 2; ++time) EXPECT_EQ(checkAll(), ChangeTotals{});
    EXPECT_EQ(tracked(), "5020");
    write("outer/inner/large", 5001);
    EXPECT_EQ(checkAll(), (ChangeTotals{1, 0, 1}));
}

TEST_F(Counted, ALargerLocationAroundBeginsWithWhatIsItsOwn) {
    includeAll({"outer/inner"});
    write("outer/inner/large", 5000);
    checkAll();
    include("outer");
    for (int time = 0; time < 2; ++time) EXPECT_EQ(checkAll(), ChangeTotals{});
    EXPECT_EQ(tracked(), "5020");
    EXPECT_EQ(recorded(), "0");
}

TEST_F(Counted, TheHistoryMovesWithinALocationOutOfItAndBack) {
    include("root");
    write("root/Brindle/History.sqlite", 700);
    checkAll("root/Brindle");
    EXPECT_EQ(tracked(), "10");

    fs::create_directories(path("elsewhere"));
    const char* places[] = {"root/deeper/Brindle", "elsewhere/Brindle", "root/Brindle"};
    std::string from = "root/Brindle";
    for (const char* to : places) {
        SCOPED_TRACE(to);
        fs::create_directories(path(to).parent_path());
        fs::rename(path(from), path(to));
        EXPECT_EQ(checkAll(to), ChangeTotals{});
        EXPECT_EQ(tracked(), "10");
        from = to;
    }
}

// A copy that stays behind is an ordinary folder from then on, and a folder that the history moves into is
// none any more: the bytes were there before, and still are.
TEST_F(Counted, WhatTheHistoryLeavesBehindAndMovesIntoIsNoNews) {
    include("root");
    write("root/old/History.sqlite", 700);
    write("root/new/photos", 3000);
    checkAll("root/old");
    EXPECT_EQ(tracked(), "3010");

    write("root/new/History.sqlite", 700);
    for (int time = 0; time < 2; ++time) EXPECT_EQ(checkAll("root/new"), ChangeTotals{});
    EXPECT_EQ(tracked(), "710");
    for (int time = 0; time < 2; ++time) EXPECT_EQ(checkAll("root/old"), ChangeTotals{});
    EXPECT_EQ(tracked(), "3710");
    EXPECT_EQ(recorded(), "0");
    // Whoever deletes it after that did free something.
    fs::remove(path("root/new/photos"));
    EXPECT_EQ(checkAll("root/old"), (ChangeTotals{0, 3000, 1}));
}

}  // namespace
}  // namespace brindle
