#include "analysis/GrowthTree.h"
#include "model/Packages.h"
#include "support/Rounds.h"

#include <algorithm>
#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

FileChange change(FolderPath folder, std::int64_t delta, const char* location = "a") {
    return {.locationID = {location}, .folder = std::move(folder), .byteDelta = delta};
}

/// One line a folder: "a/x 5, 2 smaller 3".
void describe(const std::vector<GrownFolder>& folders, const std::string& indent,
              std::vector<std::string>& lines) {
    for (const GrownFolder& folder : folders) {
        std::string line = indent + folder.ref.locationID.rawValue;
        for (const std::string& component : folder.ref.components) line += "/" + component;
        line += " " + std::to_string(folder.net);
        if (folder.smallerFolders > 0)
            line += ", " + std::to_string(folder.smallerFolders) + " smaller " +
                    std::to_string(folder.smallerBytes);
        lines.push_back(line);
        describe(folder.folders, indent + "  ", lines);
    }
}

std::vector<std::string> described(const std::vector<FileChange>& changes,
                                   std::optional<std::int64_t> over = {}) {
    std::vector<std::string> lines;
    describe(growthTree(changes, over), "", lines);
    return lines;
}

TEST(GrowthTree, FoldersStandBelowEachOtherWithTheMostGrowthFirst) {
    const std::vector<FileChange> changes{
        change({"m", "raw", "day"}, 600),
        change({"m", "raw"}, 300),
        change({"m", "cut"}, 90),
        change({"m"}, 5),
        change({"s"}, 19),
        change({"t"}, 18),
        change({"t", "deep"}, 1),
        change({"z"}, -3),
        change({"P.app", "Contents"}, 40),
        change({"P.app"}, 2),
        change({"x", "in"}, 70, "b"),
        change({"x"}, -60, "b"),
        change({"z"}, 30, "b"),
        change({"y"}, -100, "b"),
    };
    EXPECT_THAT(described(changes),
                ElementsAre("a 1072, 2 smaller 38",  // a fiftieth of 1,072 is 21
                            "  a/m 995", "    a/m/raw 900", "      a/m/raw/day 600", "    a/m/cut 90",
                            "  a/P.app 42",  // and no folder inside the package
                            "b -60",         // shrank, and holds one that grew
                            "  b/x 10", "    b/x/in 70", "  b/z 30"));
    EXPECT_THAT(described(changes, 18),
                ElementsAre("a 1072", "  a/m 995", "    a/m/raw 900", "      a/m/raw/day 600",
                            "    a/m/cut 90", "  a/P.app 42", "  a/s 19", "  a/t 19, 1 smaller 1", "b -60",
                            "  b/x 10", "    b/x/in 70", "  b/z 30"));
    EXPECT_THAT(described(changes, 70), Not(testing::Contains("b -60"))) << "not more than the limit";
    EXPECT_THAT(described({change({"gone"}, -5), change({}, 0)}), IsEmpty());
}

TEST(GrowthTree, AFolderThatOnlyHoldsTheOneThatChangedIsNotListed) {
    EXPECT_THAT(described({change({"x", "y", "z"}, 7), change({"x", "y", "z", "w"}, -1)}),
                ElementsAre("a/x/y/z 6"));
    EXPECT_THAT(described({change({"x", "y"}, 7), change({"x"}, -1)}), ElementsAre("a/x 6", "  a/x/y 7"));
}

/// Every figure counted anew from all changes.
class Recount {
public:
    Recount(const std::vector<FileChange>& changes, std::int64_t least) : least_(least) {
        for (const FileChange& one : changes) {
            const std::size_t depth = creditedDepth(one.folder, one.folder.size());
            for (std::size_t i = 0; i <= depth; ++i)
                net_[{one.locationID, one.folder.first(i)}] += one.byteDelta;
            direct_.insert({one.locationID, one.folder.first(depth)});
        }
    }

    [[nodiscard]] std::vector<GrownFolder> trees() const {
        std::vector<GrownFolder> roots;
        for (const auto& [ref, net] : net_)
            if (ref.components.empty() && isListed(ref)) roots.push_back(listed(ref));
        return sorted(std::move(roots));
    }

private:
    [[nodiscard]] static bool isAtOrBelow(const FolderRef& ref, const FolderRef& folder) {
        return ref.locationID == folder.locationID && ref.components.size() >= folder.components.size() &&
               ref.components.first(folder.components.size()) == folder.components;
    }

    [[nodiscard]] bool isListed(const FolderRef& folder) const {
        return std::ranges::any_of(net_, [&](const auto& entry) {
            return isAtOrBelow(entry.first, folder) && entry.second >= least_;
        });
    }

    [[nodiscard]] std::vector<FolderRef> childrenOf(const FolderRef& folder) const {
        std::vector<FolderRef> children;
        for (const auto& [ref, net] : net_)
            if (isAtOrBelow(ref, folder) && ref.components.size() == folder.components.size() + 1)
                children.push_back(ref);
        return children;
    }

    [[nodiscard]] GrownFolder listed(const FolderRef& ref) const {
        const auto children = childrenOf(ref);
        if (children.size() == 1 && !direct_.contains(ref)) return listed(children.front());
        GrownFolder folder{.ref = ref, .net = net_.at(ref), .folders = {}};
        for (const FolderRef& child : children) {
            if (isListed(child)) {
                folder.folders.push_back(listed(child));
            } else if (net_.at(child) > 0) {
                ++folder.smallerFolders;
                folder.smallerBytes += net_.at(child);
            }
        }
        folder.folders = sorted(std::move(folder.folders));
        return folder;
    }

    [[nodiscard]] std::vector<GrownFolder> sorted(std::vector<GrownFolder> folders) const {
        std::ranges::stable_sort(folders, std::greater(), [this](const GrownFolder& folder) {
            std::int64_t most = folder.net;
            for (const auto& [ref, net] : net_)
                if (isAtOrBelow(ref, folder.ref)) most = std::max(most, net);
            return most;
        });
        return folders;
    }

    std::int64_t least_;
    std::map<FolderRef, std::int64_t> net_;
    std::set<FolderRef> direct_;
};

TEST(GrowthTree, AgreesWithARecountOnRandomChanges) {
    const auto seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    const auto below = [&random](std::uint64_t end) { return random() % end; };
    for (int round = 0; round < testRounds(200); ++round) {
        std::vector<FileChange> changes;
        for (std::uint64_t i = below(60); i > 0; --i) {
            std::vector<std::string> folder;
            for (std::uint64_t depth = below(5); depth > 0; --depth)
                folder.push_back(std::array{"x", "y", "z", "P.app"}[below(4)]);
            // Sums of such numbers hardly ever come out as nothing, or as each other.
            const auto size = static_cast<std::int64_t>(1 + below(std::uint64_t{1} << (30 + below(20))));
            changes.push_back(
                change(std::move(folder), below(3) == 0 ? -size : size, below(2) == 0 ? "a" : "b"));
        }
        const auto over = static_cast<std::int64_t>(below(std::uint64_t{1} << (1 + below(48))));
        ASSERT_EQ(growthTree(changes, over), Recount(changes, over + 1).trees()) << "round " << round;
    }
}

}  // namespace
}  // namespace brindle
