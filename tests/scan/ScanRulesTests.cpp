#include "scan/ScanRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace brindle {
namespace {

using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

TEST(UncountedCandidates, AreTheTrashTheHistoryTheProgramAndTheOtherLocations) {
    const CandidateSources sources{.home = "/home/ann",
                                   .dataHome = "/home/ann/.local/share",
                                   .mountPoints = {"/", "/media/stick"},
                                   .userID = 1000,
                                   .historyDirectory = "/home/ann/.local/share/Brindle",
                                   .programFile = "/usr/bin/brindle",
                                   .otherLocations = {"/srv", "/home/ann/Music"}};
    const std::vector<UncountedCandidate> expected{{"/home/ann/.Trash", true},
                                                   {"/home/ann/.local/share/Trash", true},
                                                   {"/.Trash-1000", true},
                                                   {"/.Trash/1000", true},
                                                   {"/media/stick/.Trash-1000", true},
                                                   {"/media/stick/.Trash/1000", true},
                                                   {"/home/ann/.local/share/Brindle", false},
                                                   {"/usr/bin/brindle", false},
                                                   {"/srv", false},
                                                   {"/home/ann/Music", false}};
    EXPECT_EQ(uncountedCandidates(sources), expected);
}

struct CandidateCase {
    std::string name;
    std::string root;
    UncountedCandidate candidate;
    std::vector<std::string> uncounted;
    std::vector<std::string> trash;
};

class CandidateRule : public testing::TestWithParam<CandidateCase> {};

TEST_P(CandidateRule, HoldsBelowTheRoot) {
    const auto rules = makeScanRules(GetParam().root, false, std::vector{GetParam().candidate});
    EXPECT_THAT(rules.uncountedPaths, testing::UnorderedElementsAreArray(GetParam().uncounted));
    EXPECT_THAT(rules.trashPaths, testing::UnorderedElementsAreArray(GetParam().trash));
    EXPECT_TRUE(rules.excludedPaths.empty());
}

INSTANTIATE_TEST_SUITE_P(
    ScanRules, CandidateRule,
    testing::Values(
        CandidateCase{"Inside", "/home/ann", {"/home/ann/Music/Old"}, {"Music/Old"}, {}},
        CandidateCase{"InsideTheTop", "/", {"/home/ann/Music"}, {"home/ann/Music"}, {}},
        CandidateCase{"Equal", "/home/ann", {"/home/ann"}, {}, {}},
        CandidateCase{"EqualToTheTop", "/", {"/"}, {}, {}},
        CandidateCase{"Around", "/home/ann", {"/home"}, {}, {}},
        CandidateCase{"SameBeginningOfAName", "/srv/disk", {"/srv/disk2/Music"}, {}, {}},
        CandidateCase{"OtherCase", "/srv/disk", {"/srv/Disk/Music"}, {}, {}},
        CandidateCase{"TrashByItsName", "/home", {"/home/ann/.Trash"}, {"ann/.Trash"}, {"ann/.Trash"}},
        CandidateCase{"TrashByItsMark", "/", {"/mnt/.Trash-7", true}, {"mnt/.Trash-7"}, {"mnt/.Trash-7"}},
        CandidateCase{"NoTrashByHalfItsName", "/", {"/mnt/.Trash-7"}, {"mnt/.Trash-7"}, {}}),
    [](const auto& test) { return test.param.name; });

TEST(ScanRules, AWholeDriveLeavesOutWhatSystemsKeepAtItsTop) {
    const auto rules = makeScanRules("/media/stick", true, {});
    EXPECT_EQ(rules.excludedPaths.size(), 14U);
    EXPECT_THAT(rules.excludedPaths, IsSupersetOf({".Spotlight-V100", ".vol", "lost+found", "$RECYCLE.BIN"}));
    EXPECT_TRUE(rules.uncountedPaths.empty());
}

TEST(ScanRules, ADataVolumeKnowsItsFoldersByBothTheirPaths) {
    const DriveLayout layout{.dataVolume = "/System/Volumes/Data",
                             .exclusions = {"Volumes", "private/var/vm"}};
    const std::vector<UncountedCandidate> candidates{{"/Users/ann/.Trash"},
                                                     {"/System/Volumes/Data/Users/ann/Music"}};
    const auto rules = makeScanRules(layout.dataVolume, true, candidates, layout);
    EXPECT_EQ(rules.excludedPaths.size(), 16U);
    EXPECT_THAT(rules.excludedPaths, IsSupersetOf({".Trashes", "Volumes", "private/var/vm"}));
    EXPECT_THAT(rules.uncountedPaths, IsSupersetOf({"Users/ann/.Trash", "Users/ann/Music"}));
    EXPECT_THAT(rules.trashPaths, UnorderedElementsAre("Users/ann/.Trash"));

    EXPECT_EQ(makeScanRules("/Users/ann", false, candidates, layout),
              (ScanRules{.uncountedPaths = {".Trash"}, .trashPaths = {".Trash"}}));
}

}  // namespace
}  // namespace brindle
