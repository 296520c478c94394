#include "checks/EstimatePass.h"
#include "scan/LocationAccess.h"
#include "support/TempHistory.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr UnixTime day = 86'400;

/// A location on the real file system, whose files are created while the test runs: not the files are old,
/// but the test's today and first check are later.
class EstimatePass : public testing::Test {
protected:
    EstimatePass() {
        write("a", 10);
        write("Projects/App/src/b", 20);
        write("cache/c", 40);
        history.store().insert(makeCandidate(root.string(), {}, created).record).get();
        history.now = created + 10 * day;
    }

    void write(const std::string& path, std::size_t bytes) const {
        fs::create_directories((root / path).parent_path());
        std::ofstream(root / path) << std::string(bytes, 'x');
    }

    /// An order for the location, first checked so many days after its files were created.
    EstimateOrder order(double baselineAfter) {
        LocationRecord record = history.store().loadLocations().get().front();
        record.baselineAt = created + baselineAfter * day;
        return {.record = record,
                .scanPath = record.scanPath,
                .rules = {.excludedPaths = {"cache"}},
                .cancellation = cancellation,
                .now = [this] { return history.now; },
                .calendar = history.calendar};
    }

    [[nodiscard]] std::vector<std::string> estimates() const {
        return history.rows("SELECT folder, name, bytes, file_count, contributor FROM estimates ORDER BY 1");
    }

    TempFolder folder;
    fs::path root = folder.path() / "root";
    UnixTime created = systemNow();
    TempHistory history;
    std::shared_ptr<CancellationFlag> cancellation = std::make_shared<CancellationFlag>();
};

TEST_F(EstimatePass, EstimatesWhatTheCheckTracksOnTheDayItCameAndMeasuresNothing) {
    const auto before = history.everything();
    EXPECT_EQ(makeEstimates(history.store(), order(2)), (EstimateTotals{30, 2}));
    EXPECT_THAT(estimates(), ElementsAre("|a|10|1|", "Projects/App/src|b|20|1|Projects/App"));
    // Between the two looks at the clock it may have been midnight.
    const auto days = history.rows("SELECT DISTINCT local_day FROM estimates");
    EXPECT_THAT(days, testing::Each(testing::AnyOf(history.calendar.day(created).text(),
                                                   history.calendar.day(systemNow()).text())));
    EXPECT_EQ(history.store().loadLocations().get().front().estimatedAt, history.now);

    history.store().clearEstimates().get();
    EXPECT_EQ(history.everything(), before);
}

TEST_F(EstimatePass, TheDaysGoFromTheEarliestKeptOneToTheDayBeforeTheFirstCheck) {
    // The day of the first check itself is measured.
    EXPECT_EQ(makeEstimates(history.store(), order(0)), EstimateTotals{});
    history.now = created + 88 * day;
    EXPECT_EQ(makeEstimates(history.store(), order(50)), (EstimateTotals{30, 2}));
    history.now = created + 91 * day;
    EXPECT_EQ(makeEstimates(history.store(), order(50)), EstimateTotals{});
    EXPECT_THAT(estimates(), IsEmpty());

    // Nothing to estimate: nothing to walk, and no reason to come back.
    history.now = created + 200 * day;
    fs::remove_all(root);
    EXPECT_EQ(makeEstimates(history.store(), order(100)), EstimateTotals{});
    EXPECT_EQ(history.store().loadLocations().get().front().estimatedAt, history.now);
}

TEST_F(EstimatePass, AStoppedOrFailedWalkLeavesTheOldOnes) {
    static_cast<void>(makeEstimates(history.store(), order(2)));
    const auto before = history.everything();
    history.now += 1;

    // As after a drive was unmounted: a folder of this name is there, and is not the location.
    fs::rename(root, folder.path() / "away");
    EXPECT_THROW(static_cast<void>(makeEstimates(history.store(), order(2))), ScanError);
    fs::rename(folder.path() / "away", root);

    cancellation->set();
    EXPECT_THROW(static_cast<void>(makeEstimates(history.store(), order(2))), Cancelled);
    EXPECT_EQ(history.everything(), before);
}

}  // namespace
}  // namespace brindle
