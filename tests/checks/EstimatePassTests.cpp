#include "checks/EstimatePass.h"
#include "scan/LocationAccess.h"
#include "support/RandomTree.h"
#include "support/TempHistory.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sys/stat.h>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr UnixTime oneDay = 86'400;

/// A location on the real file system, whose files are created while the test runs: not the files are old,
/// but the test's today and first check are later.
class EstimatePass : public testing::Test {
protected:
    EstimatePass() {
        write("a", 10);
        write("Projects/App/src/b", 20);
        write("cache/c", 40);
        history.store().insert(makeCandidate(root.string(), {}, created).record).get();
        history.now = created + 10 * oneDay;
    }

    void write(const std::string& path, std::size_t bytes) const {
        fs::create_directories((root / path).parent_path());
        std::ofstream(root / path) << std::string(bytes, 'x');
    }

    /// An order for the location, first checked so many days after its files were created.
    EstimateOrder order(double baselineAfter) {
        LocationRecord record = history.store().loadLocations().get().front();
        record.baselineAt = created + baselineAfter * oneDay;
        return {.record = record,
                .scanPath = record.scanPath,
                .rules = {.excludedPaths = {"cache"}},
                .cancellation = cancellation,
                .now = [this] { return history.now; },
                .calendar = history.calendar};
    }

    TempFolder folder;
    fs::path root = folder.path() / "root";
    UnixTime created = systemNow();
    TempHistory history;
    std::shared_ptr<CancellationFlag> cancellation = std::make_shared<CancellationFlag>();
};

TEST_F(EstimatePass, TheDaysGoFromTheEarliestKeptOneToTheDayBeforeTheFirstCheck) {
    EXPECT_EQ(makeEstimates(history.store(), order(2)), (EstimateTotals{30, 2}));
    // The day of the first check itself is measured.
    EXPECT_EQ(makeEstimates(history.store(), order(0)), EstimateTotals{});
    history.now = created + 88 * oneDay;
    EXPECT_EQ(makeEstimates(history.store(), order(50)), (EstimateTotals{30, 2}));
    history.now = created + 91 * oneDay;
    EXPECT_EQ(makeEstimates(history.store(), order(50)), EstimateTotals{});
    EXPECT_THAT(history.rows("SELECT * FROM estimates"), testing::IsEmpty());

    // Nothing to estimate: nothing to walk, and no reason to come back.
    history.now = created + 200 * oneDay;
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

std::string createdOn(const fs::path& file, const Calendar& calendar) {
    struct statx status {};
    EXPECT_EQ(::statx(AT_FDCWD, file.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME | STATX_MTIME, &status), 0);
    const bool isTold = (status.stx_mask & STATX_BTIME) != 0;
    return calendar.day(static_cast<double>((isTold ? status.stx_btime : status.stx_mtime).tv_sec)).text();
}

/// What the dates of files say of a tree, worked out from a listing of it.
std::multiset<std::string> expectedRows(const fs::path& root, const Calendar& calendar) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(root))
        if (!entry.is_symlink() && entry.is_regular_file() && entry.file_size() > 0)
            files.push_back(entry.path());

    struct Row {
        std::string dayAndFolder;
        std::string name;
        std::uintmax_t bytes = 0;
        int files = 0;
    };
    std::map<std::string, Row> rows;
    for (const fs::path& file : files) {
        const auto folder =
            file.parent_path() == root ? fs::path() : file.parent_path().lexically_relative(root);
        const bool isSingle = files.size() <= 2000 || fs::file_size(file) >= 10'000'000;
        const std::string key = createdOn(file, calendar) + "|" + folder.string();
        Row& row = rows[isSingle ? key + "/" + file.filename().string() : key];
        row.dayAndFolder = key;
        row.name = row.files == 0 ? file.filename().string() : "";
        row.bytes += fs::file_size(file);
        row.files += 1;
    }
    std::multiset<std::string> texts;
    for (const auto& [key, row] : rows)
        texts.insert(fmt::format("{}|{}|{}|{}", row.dayAndFolder, row.name, row.bytes, row.files));
    return texts;
}

TEST_F(EstimatePass, RandomTreesAreEstimatedAsAListingOfThemSays) {
    const auto estimated = [this] {
        EstimateOrder all = order(2);
        all.rules = {};
        static_cast<void>(makeEstimates(history.store(), all));
        const auto rows = history.rows("SELECT local_day, folder, name, bytes, file_count FROM estimates");
        return std::multiset<std::string>(rows.begin(), rows.end());
    };
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE(seed);
        RandomTree tree(root, seed);
        tree.change(150);
        EXPECT_EQ(estimated(), expectedRows(root, history.calendar));
    }
    for (int i = 0; i < 2'100; ++i)
        write(fmt::format("many/{}/{}", i % 50, i), 1 + static_cast<std::size_t>(i));
    const auto grouped = estimated();
    EXPECT_EQ(grouped, expectedRows(root, history.calendar));
    EXPECT_LT(grouped.size(), 1'000U);
}

}  // namespace
}  // namespace brindle
