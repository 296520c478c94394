#include "scan/ScanRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
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

TEST(ScanRules, WhatLiesBelowTheRootIsNotCounted) {
    const struct {
        const char* root;
        UncountedCandidate candidate;
        std::optional<std::string> uncounted;
        bool isTrash;
    } cases[] = {
        {"/home/ann", {"/home/ann/Music/Old"}, "Music/Old", false},
        {"/", {"/home/ann/Music"}, "home/ann/Music", false},
        {"/home/ann", {"/home/ann"}, {}, false},
        {"/", {"/"}, {}, false},
        {"/home/ann", {"/home"}, {}, false},
        {"/srv/disk", {"/srv/disk2/Music"}, {}, false},
        {"/srv/disk", {"/srv/Disk/Music"}, {}, false},
        {"/home", {"/home/ann/.Trash"}, "ann/.Trash", true},
        {"/", {"/mnt/.Trash-7", true}, "mnt/.Trash-7", true},
        {"/", {"/mnt/.Trash-7"}, "mnt/.Trash-7", false},  // half the name is no mark
    };
    for (const auto& [root, candidate, uncounted, isTrash] : cases) {
        ScanRules expected;
        if (uncounted) expected.uncountedPaths = {*uncounted};
        if (isTrash) expected.trashPaths = expected.uncountedPaths;
        EXPECT_EQ(makeScanRules(root, false, {&candidate, 1}), expected) << candidate.path << " in " << root;
    }
}

TEST(ScanRules, ADataVolumeKnowsItsFoldersByBothTheirPaths) {
    const DriveLayout layout{.dataVolume = "/System/Volumes/Data",
                             .exclusions = {"Volumes", "private/var/vm"}};
    const std::vector<UncountedCandidate> candidates{{"/Users/ann/.Trash"},
                                                     {"/System/Volumes/Data/Users/ann/Music"}};
    const auto rules = makeScanRules(layout.dataVolume, true, candidates, layout);
    EXPECT_THAT(rules.excludedPaths, IsSupersetOf({"lost+found", "Volumes", "private/var/vm"}));
    EXPECT_THAT(rules.uncountedPaths, IsSupersetOf({"Users/ann/.Trash", "Users/ann/Music"}));
    EXPECT_THAT(rules.trashPaths, UnorderedElementsAre("Users/ann/.Trash"));

    EXPECT_EQ(makeScanRules("/Users/ann", false, candidates, layout),
              (ScanRules{.uncountedPaths = {".Trash"}, .trashPaths = {".Trash"}}));
}

}  // namespace
}  // namespace brindle
