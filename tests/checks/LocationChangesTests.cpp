#include "checks/Coordinator.h"
#include "checks/DriveChoices.h"
#include "checks/LocationChanges.h"
#include "support/TestMounts.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

/// A location with 40 files, checked, whose folder is not where it was any more.
class ChosenAgain : public Coordinator {
protected:
    ChosenAgain() {
        include("docs");
        for (int i = 0; i < 39; ++i) write("docs/sub/" + std::to_string(i), 100);
        run({{"docs"}});
        fs::create_directories(path("elsewhere"));
        fs::rename(path("docs"), moved());  // not beside its old place, where it would be found again
    }

    [[nodiscard]] fs::path moved() const { return path("elsewhere") / "papers"; }

    LocationProposal propose(const fs::path& chosen) {
        return proposeAgain(history.store(), {"docs"}, chosen.string());
    }
    /// What the next check records of it.
    ChangeTotals checkAfter(const LocationProposal& proposal) {
        chooseLocationAgain(history.store(), proposal.record);
        return run({{"docs"}}).committed.at(0).totals;
    }
};

TEST_F(ChosenAgain, TheFolderThatWasMovedGoesOnWithItsHistory) {
    EXPECT_EQ(run({{"docs"}}).unavailable.at({"docs"}), LocationStatus::disconnected);
    const LocationProposal proposal = propose(moved());
    EXPECT_FALSE(proposal.isRefused);
    EXPECT_EQ(proposal.explanation, "");
    EXPECT_EQ(proposal.record.path, moved().string());
    EXPECT_EQ(proposal.record.name, "docs");
    EXPECT_EQ(checkAfter(proposal), ChangeTotals());
    EXPECT_EQ(history.record("docs").status, LocationStatus::active);
    EXPECT_EQ(run({{"docs"}}).committed.at(0).totals, ChangeTotals()) << "it is found there again";
}

TEST_F(ChosenAgain, WhatAnotherFolderWouldChangeIsSaidBeforehand) {
    const fs::path whole = path("whole copy");
    fs::copy(moved(), whole, fs::copy_options::recursive);
    EXPECT_EQ(propose(whole).explanation, "") << "put back from a backup, for instance";

    const fs::path half = path("half copy");
    fs::copy(whole, half, fs::copy_options::recursive);
    for (int i = 0; i < 10; ++i) fs::remove(half / "sub" / std::to_string(i));
    const LocationProposal proposal = propose(half);
    EXPECT_FALSE(proposal.isRefused);
    EXPECT_EQ(proposal.explanation,
              "Of the 40 files last seen in “docs”, about 10 aren't in “half copy”. The next check records "
              "them as removed, and what is new there as added.");
    EXPECT_EQ(checkAfter(proposal), (ChangeTotals{0, 1000, 10}));

    write("unrelated/sub/another name", 5);
    const LocationProposal refused = propose(path("unrelated"));
    EXPECT_TRUE(refused.isRefused);
    EXPECT_THAT(refused.explanation,
                AllOf(HasSubstr("“unrelated” holds none of the files"), HasSubstr("“docs”")));
}

TEST_F(ChosenAgain, OnlyAFolderOfItsOwnOnItsOwnDriveWillDo) {
    include("other");
    fs::create_directories(path("other/inner"));
    EXPECT_EQ(propose(path("other/inner")).explanation, "“inner” is already checked as part of “other”.");
    EXPECT_TRUE(propose(path("other")).isRefused);
    EXPECT_THROW((void)propose(path("missing")), LocationChoiceError);
    EXPECT_THROW((void)proposeAgain(history.store(), {"no such"}, moved()), LocationChangeError);

    // Another location came to contain it while the user thought about it.
    const LocationProposal proposal = propose(moved());
    include("elsewhere");
    EXPECT_THROW(chooseLocationAgain(history.store(), proposal.record), LocationChangeError);
    EXPECT_EQ(history.record("docs").path, path("docs").string());

    SKIP_UNLESS_MOUNTS_WORK();
    fs::create_directories(path("mount"));
    const TestMount memory = TestMount::memory(path("mount"));
    fs::copy(moved(), path("mount/docs"), fs::copy_options::recursive);
    try {
        (void)propose(path("mount/docs"));
        FAIL() << "the drive's figures would be another drive's";
    } catch (const LocationChangeError& error) {
        EXPECT_THAT(error.what(), HasSubstr("“docs” isn't on “"));
    }
}

TEST_F(Coordinator, AnOverlapThatCameAfterTheProposalIsRefused) {
    write("home/docs/a", 1);
    const auto proposal = proposeLocation(path("home/docs"), {}, history.now);
    EXPECT_FALSE(proposal.isRefused);
    include("home");
    EXPECT_THROW(includeLocation(history.store(), proposal.record), LocationChangeError);
    EXPECT_EQ(history.store().loadLocations().get().size(), 1U);
}

TEST_F(Coordinator, OnlyWhatWasNeverCheckedIsForgotten) {
    includeAll({"checked", "new"});
    run({{"checked"}});
    EXPECT_THROW(forgetLocation(history.store(), {"checked"}), LocationChangeError);
    forgetLocation(history.store(), {"new"});
    forgetLocation(history.store(), {"new"});
    const auto left = history.store().loadLocations().get();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_FALSE(left.front().removedAt);
}

TEST_F(Coordinator, ALocationThatIsLeftOutStopsAtOnceAndTheOthersGoOn) {
    const auto all = includeAll({"a", "b", "c"});
    Turns::LeftOut b;
    Turns::LeftOut c;
    atEnd = [&](const std::string& root) {
        if (root != path("b")) return;
        b = coordinator().leaveOut({"b"});
        c = coordinator().leaveOut({"c"});
    };
    auto summary = run(all);
    EXPECT_FALSE(summary.cancelled);
    EXPECT_THAT(committedBy(summary), testing::ElementsAre("a"));
    EXPECT_THAT(summary.failures, IsEmpty());
    EXPECT_THAT(heard(), testing::ElementsAre("started a", "started b", "finished"));
    b.reset();
    atEnd = [](const std::string&) {};
    EXPECT_THAT(committedBy(run(all)), testing::ElementsAre("a", "b"));

    // Its estimates stop as its check does.
    moveBaselinesToTheFuture();
    coordinator().enableEstimates();
    onEvent = [&](const CoordinatorEvent& event) {
        if (std::holds_alternative<LocationEstimating>(event) && !b) b = coordinator().leaveOut({"a"});
    };
    summary = run(all);
    EXPECT_FALSE(summary.cancelled);
    EXPECT_EQ(value("SELECT group_concat(id) FROM locations WHERE estimated_at IS NOT NULL"), "b");
}

TEST_F(Coordinator, DrivesThatCannotBeIncludedSayWhy) {
    const MountTable mounts({{.id = 1, .device = 1, .target = "/", .root = "/", .type = "ext4"},
                             {.id = 2,
                              .parentID = 1,
                              .device = 2,
                              .target = "/mnt/server",
                              .root = "/",
                              .type = "nfs4",
                              .source = "server:/export"}});
    const auto choices = driveChoices({}, mounts);
    ASSERT_FALSE(choices.empty());
    EXPECT_EQ(choices.back().drive.name, "server");
    EXPECT_THAT(choices.back().reason, HasSubstr("connected to this computer"));

    SKIP_UNLESS_MOUNTS_WORK();
    fs::create_directories(path("stick"));
    if (!makeImage(path("image"), "ext4")) GTEST_SKIP() << "no tools to make an image";
    const TestMount stick = TestMount::image(path("image"), path("stick"));
    const auto found = [&]() -> std::optional<DriveChoice> {
        for (DriveChoice& choice : driveChoices(history.store().loadLocations().get()))
            if (choice.drive.mountPath == path("stick")) return std::move(choice);
        return {};
    };
    ASSERT_TRUE(found());
    EXPECT_EQ(found()->reason, "");
    EXPECT_GT(found()->totalBytes, 0);
    const auto proposal = proposeDrive(found()->drive, {}, history.now);
    includeLocation(history.store(), proposal.record);
    EXPECT_FALSE(found()) << "it is included";
}

}  // namespace
}  // namespace brindle
