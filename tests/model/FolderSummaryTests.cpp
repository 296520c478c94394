#include "model/FolderSummary.h"
#include "model/Packages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST(FolderSummary, ChangesAreCreditedAtTheDepthAndNeverBelowAPackage) {
    const std::vector<FileChange> changes{
        {.locationID = {"a"}, .folder = {}, .byteDelta = 1},
        {.locationID = {"a"}, .folder = {"x", "y", "z"}, .byteDelta = 10},
        {.locationID = {"a"}, .folder = {"x", "y"}, .byteDelta = -4, .fileCount = 3},
        {.locationID = {"a"}, .folder = {"x"}, .byteDelta = 0},
        {.locationID = {"a"}, .folder = {"P.xcodeproj", "xcuserdata"}, .byteDelta = 5},
        {.locationID = {"a"}, .folder = {"P.xcodeproj"}, .byteDelta = 6},
        {.locationID = {"b"}, .folder = {"x", "y"}, .byteDelta = 7},
    };
    EXPECT_THAT(groupedByFolder(changes, contributorDepth),
                UnorderedElementsAre(FolderSummary{{{"a"}, {}}, {1, 0, 1}},
                                     FolderSummary{{{"a"}, {"x", "y"}}, {10, 4, 4}},
                                     FolderSummary{{{"a"}, {"x"}}, {0, 0, 1}},
                                     FolderSummary{{{"a"}, {"P.xcodeproj"}}, {11, 0, 2}},
                                     FolderSummary{{{"b"}, {"x", "y"}}, {7, 0, 1}}));
    EXPECT_EQ(groupedByFolder(changes, 0).size(), 2U);
}

TEST(FolderSummary, TheLargestVolumeComesFirstAndEqualOnesHaveTheirOrder) {
    // Much added and much freed is much change, though its net is nothing.
    const FolderSummary busy{{{"b"}, {"busy"}}, {500, 500, 2}};
    const FolderSummary freed{{{"b"}, {"freed"}}, {0, 900, 1}};
    const FolderSummary root{{{"a"}, {}}, {5, 0, 1}};
    const FolderSummary below{{{"a"}, {"x"}}, {0, 5, 1}};
    const FolderSummary other{{{"b"}, {}}, {5, 0, 1}};
    const std::vector<FolderSummary> mixed{other, below, freed, root, busy};
    EXPECT_THAT(largestFirst(mixed, 10), ElementsAre(busy, freed, root, below, other));
    EXPECT_THAT(largestFirst(mixed, 3), ElementsAre(busy, freed, root));
    EXPECT_THAT(largestFirst(mixed, 0), ElementsAre());
}

}  // namespace
}  // namespace brindle
