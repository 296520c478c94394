#include "app/TrackedFolders.h"
#include "app/Tracking.h"
#include "support/FaultyVfs.h"
#include "support/OtherProgram.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

using TrackingTest = TrackedFolders;

/// The locations that a run checked.
std::vector<LocationID> checkedBy(const CheckRunSummary& run) {
    std::vector<LocationID> ids;
    for (const CheckCommit& commit : run.committed) ids.push_back(commit.locationID);
    return ids;
}

TEST_F(TrackingTest, WhatIsIncludedIsCheckedAtOnceUnlessChecksArePaused) {
    ASSERT_TRUE(open(true));
    write("music/song", 500);
    const LocationRecord music = record("music");
    tracking().include(music);
    EXPECT_TRUE(tracking().isChanging());
    ASSERT_TRUE(changesAreMade());
    ASSERT_TRUE(runUntil([&] { return known("music")->baselineAt.has_value(); }));
    ASSERT_EQ(runs_.size(), 2U);
    EXPECT_THAT(checkedBy(runs_.back()), ElementsAre(music.id)) << "and nothing else again";
    EXPECT_EQ(known("music")->trackedBytes, 500);

    model().settings()->setChecksPaused(true);
    write("films/one", 1);
    tracking().include(record("films"));
    ASSERT_TRUE(changesAreMade());
    QCoreApplication::processEvents();
    EXPECT_FALSE(model().isChecking());
    EXPECT_FALSE(known("films")->lastCheckAt);
}

TEST_F(TrackingTest, WhatIsIncludedDuringACheckIsCheckedAfterIt) {
    ASSERT_TRUE(open(true));
    write("music/song", 500);
    const LocationRecord music = record("music");
    ASSERT_TRUE(holdCheckOf("home"));
    tracking().include(music);
    EXPECT_TRUE(tracking().isChanging());
    EXPECT_FALSE(known("music"));
    letGo();
    ASSERT_TRUE(changesAreMade());
    ASSERT_TRUE(runUntil([&] { return known("music") && known("music")->baselineAt; }));
    ASSERT_EQ(runs_.size(), 3U);
    EXPECT_THAT(checkedBy(runs_[1]), ElementsAre(LocationID{"home"}));
    EXPECT_THAT(checkedBy(runs_[2]), ElementsAre(music.id));
    EXPECT_THAT(failures_, IsEmpty());
}

TEST_F(TrackingTest, WhatIsBeingCheckedIsTakenAwayAtOnceAndTheOthersAreCheckedOn) {
    write("music/song", 500);
    write("new/file", 7);
    ASSERT_TRUE(open(false));
    const LocationRecord music = record("music");
    tracking().include(music);
    const LocationRecord fresh = record("new");
    tracking().include(fresh);
    ASSERT_TRUE(changesAreMade());

    // Before its first check: it is not checked after all, and so can be forgotten.
    ASSERT_TRUE(holdCheckOf("music"));
    tracking().forget(music.id);
    letGo();
    ASSERT_TRUE(changesAreMade());
    EXPECT_FALSE(known("music"));
    ASSERT_TRUE(runUntil([&] { return !runs_.empty() && known("new")->lastCheckAt; }));
    EXPECT_FALSE(runs_[0].cancelled);
    EXPECT_THAT(checkedBy(runs_[0]), ElementsAre(LocationID{"home"}, fresh.id));

    // One with a history: what its check found so far is dropped, what was recorded before stays.
    write("home/b", 99);
    ASSERT_TRUE(holdCheckOf("home"));
    tracking().stopTracking({"home"});
    letGo();
    ASSERT_TRUE(changesAreMade());
    ASSERT_TRUE(runUntil([&] { return runs_.size() == 2 && !model().isChecking(); }));
    EXPECT_THAT(checkedBy(runs_[1]), ElementsAre(fresh.id));
    EXPECT_TRUE(known("home")->removedAt);
    EXPECT_EQ(model().history().trackedTotals.at({"home"}).rbegin()->second, 1000);
    EXPECT_THAT(failures_, IsEmpty());
}

TEST_F(TrackingTest, AFolderThatWasMovedIsCheckedWhereItWasChosenAgain) {
    ASSERT_TRUE(open(true));
    fs::create_directories(path("elsewhere"));
    fs::rename(path("home"), path("elsewhere/moved"));
    model().session().refreshStatuses();
    ASSERT_TRUE(runUntil([&] { return known("home")->status == LocationStatus::disconnected; }));

    std::optional<TrackingProposal> proposal;
    QObject::connect(&tracking(), &Tracking::proposed,
                     [&](const TrackingProposal& made) { proposal = made; });
    tracking().proposeAgain({"home"}, path("elsewhere/moved"));
    ASSERT_TRUE(runUntil([&] { return proposal.has_value(); }));
    EXPECT_TRUE(proposal->isKnown);
    EXPECT_EQ(proposal->explanation, "");
    write("elsewhere/moved/b", 70);
    tracking().chooseAgain(proposal->record);
    ASSERT_TRUE(changesAreMade());
    ASSERT_TRUE(runUntil([&] { return runs_.size() == 2 && !model().isChecking(); }));
    ASSERT_TRUE(runUntil([&] { return model().ownToday().totals == (ChangeTotals{70, 0, 1}); }));
    EXPECT_EQ(known("elsewhere/moved")->id, LocationID{"home"});
}

TEST_F(TrackingTest, OnlyTheLatestProposalIsAnsweredAndEveryRefusalIsASentence) {
    ASSERT_TRUE(open(false));
    write("home/inner/a", 1);
    write("file", 1);
    std::vector<std::string> answers;
    QObject::connect(&tracking(), &Tracking::proposed, [&](const TrackingProposal& made) {
        answers.push_back(made.record.name + (made.isRefused ? " refused: " : ": ") +
                          made.explanation.toStdString());
    });
    QObject::connect(&tracking(), &Tracking::refused,
                     [&](const QString& sentence) { answers.push_back(sentence.toStdString()); });
    const std::pair<std::string, std::string> cases[] = {
        {path("home"), "home refused: “home” is already included."},
        {path("home/inner"), "inner refused: “inner” is already checked as part of “home”."},
        {path("home/../missing"), "The folder “" + path("missing") + "” isn't there."},
        {path("file"), "“" + path("file") + "” isn't a folder."},
        {"/proc", "“/proc” belongs to the system and holds no stored files."},
    };
    for (const auto& [chosen, answer] : cases) {
        answers.clear();
        tracking().propose(path("home"));
        tracking().propose(chosen);
        ASSERT_TRUE(runUntil([&] { return !answers.empty(); })) << chosen;
        EXPECT_THAT(answers, ElementsAre(answer));
    }
    EXPECT_EQ(model().records().size(), 1U);
}

TEST_F(TrackingTest, NothingChangesWhileAnotherProgramChecks) {
    OtherProgram other(data());
    ASSERT_TRUE(open(false));
    write("music/song", 500);
    tracking().include(record("music"));
    tracking().stopTracking({"home"});
    ASSERT_TRUE(runUntil([&] { return failures_.size() == 2 && !tracking().isChanging(); }));
    EXPECT_THAT(failures_[0], StartsWith("Couldn't include “music”. Another program (process "));
    EXPECT_THAT(failures_[1], StartsWith("Couldn't stop tracking “home”. Another program"));
    other.die();
    tracking().include(record("music"));
    ASSERT_TRUE(changesAreMade());
    EXPECT_TRUE(known("music"));
    EXPECT_FALSE(known("home")->removedAt);
}

TEST_F(TrackingTest, AFullDiskIsToldAndLeavesTheListAsItWas) {
    FaultyVfs disk;
    ASSERT_TRUE(open(false));
    write("music/song", 500);
    disk.arm({.failAt = 1, .code = SQLITE_FULL, .effect = DiskFault::Effect::failOnward});
    tracking().include(record("music"));
    tracking().stopTracking({"home"});
    ASSERT_TRUE(runUntil([&] { return failures_.size() == 2 && !tracking().isChanging(); }));
    EXPECT_THAT(failures_[0],
                StartsWith("Couldn't include “music”. There is no room left on the disk for the storage"));
    EXPECT_THAT(failures_[1], StartsWith("Couldn't stop tracking “home”. There is no room left"));
    disk.disarm();
    tracking().include(record("music"));
    ASSERT_TRUE(changesAreMade());
    EXPECT_TRUE(known("music"));
    EXPECT_FALSE(known("home")->removedAt);
    ASSERT_TRUE(quit());  // before the disk is another one
}

TEST_F(TrackingTest, AChangeThatWaitsForACheckIsNotLostWhenTheProgramQuits) {
    ASSERT_TRUE(open(false));
    write("music/song", 500);
    write("films/one", 500);
    ASSERT_TRUE(holdCheckOf("home"));
    tracking().include(record("music"));
    tracking().include(record("films"));
    ASSERT_TRUE(quit());
    EXPECT_EQ(rowsOf(data() + "/History.sqlite", "SELECT COUNT(*) FROM locations"),
              std::vector<std::string>{"3"});
}

}  // namespace
}  // namespace brindle
