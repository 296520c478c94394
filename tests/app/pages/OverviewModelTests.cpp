#include "app/pages/FixedHistory.h"
#include "app/pages/ListColumns.h"
#include "app/pages/OverviewModel.h"
#include "app/pages/ShownHistory.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr LocalDay today{2026, 3, 7};
constexpr LocalDay yesterday{2026, 3, 6};
constexpr LocalDay weekFirst{2026, 3, 1};
constexpr std::int64_t GB = 1'000'000'000;

class OverviewModelTest : public testing::Test {
protected:
    OverviewModelTest() {
        history_->known.today = today;
        history_->include("home", "Home", {2026, 2, 1});
        history_->known.volumes.push_back({.id = "drive",
                                           .name = "Disk",
                                           .totalBytes = 1000 * GB,
                                           .freeBytes = 250 * GB,
                                           .availableBytes = 300 * GB});
    }

    void check(const std::string& id, const LocalDay& day, const FolderPath& folder, std::int64_t bytes) {
        history_->record(id, day, folder, bytes);
        location(id).lastCheck = shown_.model().calendar().time(day, 14);
    }
    [[nodiscard]] TrackedLocation& location(const std::string& id) {
        return *std::ranges::find(history_->known.locations, LocationID{id}, &TrackedLocation::id);
    }
    [[nodiscard]] bool show() { return shown_.show(history_); }
    /// Once everything is read.
    [[nodiscard]] bool isRead() {
        return runUntil([this] {
            return overview_.contributors()->rowCount() > 0 || !overview_.contributorsSentence().isEmpty();
        });
    }
    [[nodiscard]] Selection& selection() { return *shown_.model().selection(); }

    std::shared_ptr<FixedHistory> history_ = std::make_shared<FixedHistory>();
    ShownHistory shown_;
    OverviewModel overview_{shown_.model()};
};

TEST_F(OverviewModelTest, TodayGoesFromNothingOverACheckToADayWithoutOne) {
    ASSERT_TRUE(show());
    EXPECT_EQ(overview_.state(), OverviewModel::NothingYet);
    EXPECT_THAT(overview_.stateSentence().toStdString(), HasSubstr("after the first check."));
    EXPECT_EQ(overview_.lastCheck(), "");

    check("home", today, {"Movies", "Raw"}, 5 * GB);
    check("home", today, {"Downloads"}, -1 * GB);
    location("home").trackedBytes = 80 * GB;
    ASSERT_TRUE(show());
    // What was read of the history before may only just have come.
    ASSERT_TRUE(runUntil([&] { return !overview_.sentence().isEmpty(); }));
    EXPECT_EQ(overview_.state(), OverviewModel::Recorded);
    EXPECT_EQ(overview_.stateSentence(), "");
    EXPECT_EQ(overview_.day(), "Saturday, March 7, 2026");
    EXPECT_EQ(overview_.net(), "+4.0 GB");
    EXPECT_EQ(overview_.netExact(), "4,000,000,000 bytes");
    EXPECT_EQ(overview_.netDirection(), 1);
    EXPECT_EQ(overview_.added(), "+5.0 GB");
    EXPECT_EQ(overview_.freed(), "\u22121.0 GB");
    EXPECT_EQ(overview_.files(), "2 files changed");
    EXPECT_EQ(overview_.partial(), "");
    EXPECT_EQ(overview_.sentence(), "5.0 GB came and 1.0 GB went, most of it in Movies/Raw.");
    EXPECT_EQ(overview_.lastCheck(), "Last checked Mar 7, 2026, 2:00\u202fPM. 80.0 GB are tracked.");

    history_->known.today = {2026, 3, 8};
    ASSERT_TRUE(show());
    EXPECT_EQ(overview_.state(), OverviewModel::NoCheck);
    EXPECT_EQ(overview_.stateSentence(), "No check recorded for this date.");
    EXPECT_EQ(overview_.sentence(), "") << "yesterday's sentence";
    ASSERT_TRUE(isRead());
    EXPECT_EQ(overview_.sentence(), "");
}

TEST_F(OverviewModelTest, WhatIsMissingIsSaid) {
    history_->include("usb", "Stick", {2026, 2, 1}).status = LocationStatus::disconnected;
    history_->include("root", "Root", {2026, 2, 1}).status = LocationStatus::needsAccess;
    check("home", today, {}, GB);
    check("usb", yesterday, {}, GB);
    check("root", yesterday, {}, 0);
    ASSERT_TRUE(show());
    EXPECT_EQ(overview_.partial(), "The record is partial: no check of “Stick”, “Root” on this day.");
    EXPECT_THAT(overview_.troubles(),
                ElementsAre("“Stick” is disconnected. Its record goes on when it is back.",
                            "“Root” can't be read. Its record goes on when Brindle has access."));

    // Of a single location nothing is missing; of another one there is nothing yet.
    selection().setScope({LocationID{"home"}});
    EXPECT_EQ(overview_.partial(), "");
    EXPECT_THAT(overview_.troubles(), IsEmpty());
    selection().setScope({LocationID{"usb"}});
    EXPECT_EQ(overview_.state(), OverviewModel::NoCheck);
}

TEST_F(OverviewModelTest, TheWeekShowsMeasuredAndEstimatedDaysAndGaps) {
    location("home").trackingStart = LocalDay{2026, 3, 3};
    history_->known.estimates[{"home"}][{2026, 3, 2}] = {2 * GB, 10};
    check("home", {2026, 3, 3}, {"a"}, 4 * GB);
    check("home", {2026, 3, 3}, {"a"}, -1 * GB);
    check("home", yesterday, {"a"}, -3 * GB);
    history_->known.partialDays[{"home"}].insert(yesterday);
    check("home", today, {}, 0);
    ASSERT_TRUE(show());
    EXPECT_THAT(texts(*overview_.week(), "label"),
                ElementsAre("Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"));
    EXPECT_THAT(texts(*overview_.week(), "state"),
                ElementsAre("noCheck", "estimated", "recorded", "noCheck", "noCheck", "partial", "recorded"));
    EXPECT_THAT(numbers(*overview_.week(), "addedShare"), ElementsAre(0, 0.5, 1, 0, 0, 0, 0));
    EXPECT_THAT(numbers(*overview_.week(), "freedShare"), ElementsAre(0, 0, 0.25, 0, 0, 0.75, 0));
    EXPECT_THAT(texts(*overview_.week(), "accessibleText"),
                ElementsAre("Sunday, March 1: Not tracked",
                            "Monday, March 2: about 2.0 GB came, estimated from file dates",
                            "Tuesday, March 3: net change +3.0 GB, 4.0 GB added, 1.0 GB freed",
                            "Wednesday, March 4: No check", "Thursday, March 5: No check",
                            "Friday, March 6: net change \u22123.0 GB, 0 bytes added, 3.0 GB freed, partial",
                            "Saturday, March 7: net change 0 bytes, 0 bytes added, 0 bytes freed"));
    EXPECT_EQ(overview_.weekAdded(), "+4.0 GB") << "what is estimated is no part of it";
    EXPECT_EQ(overview_.weekFreed(), "\u22124.0 GB");
    EXPECT_EQ(overview_.weekCoverage(),
              "3 of 7 days recorded, 1 partial, 1 estimated, 2 without a check, 1 not tracked");

    shown_.model().settings()->setShowsEstimates(true);
    EXPECT_EQ(overview_.estimates(),
              "Estimated from file dates: 2.0 GB came on Monday, March 2, in 10 files.");
    shown_.model().settings()->setShowsEstimates(false);
    EXPECT_EQ(overview_.estimates(), "");
}

TEST_F(OverviewModelTest, FoldersAndDrivesAreThoseOfTheScope) {
    history_->include("other", "Other", {2026, 2, 1}).volumeID = "gone";
    check("home", weekFirst, {"Big", "Deep", "Deeper"}, 9 * GB);
    check("home", {2026, 2, 28}, {"Earlier"}, 20 * GB);
    check("other", today, {"Elsewhere"}, 3 * GB);
    ASSERT_TRUE(show());
    ASSERT_TRUE(isRead());
    EXPECT_THAT(texts(*overview_.contributors(), "place"), ElementsAre("Home/Big/Deep", "Other/Elsewhere"));
    EXPECT_EQ(overview_.sentence(), "3.0 GB came, all of it in Other/Elsewhere.");
    EXPECT_THAT(texts(*overview_.drives(), "used"), ElementsAre("750.0 GB of 1.0 TB used"));
    EXPECT_THAT(numbers(*overview_.drives(), "share"), ElementsAre(0.75));

    selection().setScope({LocationID{"other"}});
    EXPECT_EQ(overview_.contributors()->rowCount(), 0) << "those of another scope";
    ASSERT_TRUE(isRead());
    EXPECT_THAT(texts(*overview_.contributors(), "place"), ElementsAre("Other/Elsewhere"));
    EXPECT_EQ(overview_.drives()->rowCount(), 0);

    history_->isBroken = true;
    std::string note;
    QObject::connect(&shown_.model(), &AppModel::noted,
                     [&](const QString& sentence) { note = sentence.toStdString(); });
    selection().setScope({});
    EXPECT_TRUE(runUntil([&] { return !note.empty(); }));
}

TEST_F(OverviewModelTest, EveryFigureLeadsToTheChangesBehindIt) {
    check("home", weekFirst, {"Big", "Deep", "Deeper"}, 9 * GB);
    check("home", today, {"Big"}, GB);
    history_->known.estimates[{"home"}][{2026, 2, 3}] = {2 * GB, 10};
    ASSERT_TRUE(show());
    ASSERT_TRUE(isRead());
    struct Case {
        const char* name;
        std::function<void()> open;
        LocalDay first;
        LocalDay last;
        DirectionFilter direction = DirectionFilter::all;
        std::optional<FolderRef> folder = {};
    };
    const FolderRef home{{"home"}, {}};
    const FolderRef deep{{"home"}, {"Big", "Deep"}};
    using enum DirectionFilter;
    for (const bool isScoped : {false, true}) {
        const auto root = isScoped ? std::optional(home) : std::nullopt;
        selection().setScope(isScoped ? LocationScope{LocationID{"home"}} : LocationScope());
        ASSERT_TRUE(isRead());
        for (const Case& one : {
                 Case{"today", [&] { overview_.openToday(); }, today, today, all, root},
                 Case{"added", [&] { overview_.openTodayAdded(); }, today, today, added, root},
                 Case{"freed", [&] { overview_.openTodayFreed(); }, today, today, freed, root},
                 Case{"week", [&] { overview_.openWeek(); }, weekFirst, today, all, root},
                 Case{"week added", [&] { overview_.openWeekAdded(); }, weekFirst, today, added, root},
                 Case{"week freed", [&] { overview_.openWeekFreed(); }, weekFirst, today, freed, root},
                 Case{"day", [&] { overview_.openDay(5); }, yesterday, yesterday, all, root},
                 Case{"folder", [&] { overview_.openFolder(0); }, weekFirst, today, all, deep},
                 Case{"estimates", [&] { overview_.openEstimates(); }, {2026, 2, 3}, {2026, 2, 3}, all, root},
             }) {
            selection().setDestination(Destination::overview);
            selection().setExplorer({.folder = FolderRef{{"home"}, {"Left"}}, .search = "left", .page = 2});
            one.open();
            EXPECT_EQ(selection().destination(), Destination::activity) << one.name;
            EXPECT_EQ(selection().firstDay(), one.first) << one.name;
            EXPECT_EQ(selection().day(), one.last) << one.name;
            EXPECT_EQ(selection().explorer(),
                      (ExplorerState{.folder = one.folder, .direction = one.direction}))
                << one.name;
        }
    }
    overview_.openDrives();
    EXPECT_EQ(selection().destination(), Destination::locations);
    overview_.openDay(7);
    overview_.openFolder(-1);
    EXPECT_EQ(selection().destination(), Destination::locations);
}

}  // namespace
}  // namespace brindle
