#include "app/pages/ExplorerModel.h"
#include "app/pages/FixedHistory.h"
#include "app/pages/ShownHistory.h"

#include <fmt/format.h>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr LocalDay today{2026, 3, 7};
constexpr LocalDay yesterday{2026, 3, 6};

/// An explorer of today's changes of a history that each test fills.
class ExplorerModelTest : public testing::Test {
protected:
    ExplorerModelTest() {
        history_->known.today = today;
        history_->include("home", "Home", {2026, 2, 1});
        history_->known.checkedDays[{"home"}] = {yesterday, today};
    }

    FileChange& add(const FolderPath& folder, const std::string& name, std::int64_t bytes,
                    const std::string& location = "home") {
        return history_->changes.emplace_back(
            FileChange{.id = static_cast<std::int64_t>(history_->changes.size()) + 1,
                       .locationID = {location},
                       .folder = folder,
                       .name = name,
                       .action = bytes > 0 ? ChangeAction::added : ChangeAction::removed,
                       .byteDelta = bytes,
                       .observedAt = 1'772'884'800,  // 12:00
                       .day = today});
    }
    void estimate(const FolderPath& folder, const std::string& name, std::int64_t bytes) {
        history_->estimates.push_back({.id = static_cast<std::int64_t>(history_->estimates.size()) + 1,
                                       .locationID = {"home"},
                                       .folder = folder,
                                       .name = name,
                                       .byteDelta = bytes,
                                       .day = today,
                                       .source = ChangeSource::estimated});
    }

    [[nodiscard]] Selection& selection() { return *shown_.model().selection(); }
    [[nodiscard]] bool show() { return shown_.show(history_) && settles(); }
    /// Once everything that was asked is answered.
    [[nodiscard]] bool settles() {
        return runUntil([this] {
            const ExplorerState& wanted = selection().explorer();
            ExplorerState shownState = explorer_.answer().state;
            shownState.page = wanted.page;
            return explorer_.isAnswered() && shownState == wanted &&
                   explorer_.answer().recorded.page ==
                       std::min(wanted.page, explorer_.answer().recorded.pages - 1);
        });
    }
    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const ExplorerRow& row : explorer_.rows()->rows())
            names.push_back(row.isEstimated ? "~" + row.name.toStdString() : row.name.toStdString());
        return names;
    }
    [[nodiscard]] std::string way() {
        std::string way;
        for (const Crumb& crumb : explorer_.crumbs()->rows()) way += "/" + crumb.name.toStdString();
        return way;
    }
    [[nodiscard]] bool open(int row) {
        explorer_.open(row);
        return settles();
    }

    std::shared_ptr<FixedHistory> history_ = std::make_shared<FixedHistory>();
    ShownHistory shown_;
    ExplorerModel explorer_{shown_.model()};
};

TEST_F(ExplorerModelTest, ListsFoldersBeforeFilesWithTheirAmountsInColumns) {
    add({"Movies"}, "raw.mov", 3000);
    add({"Movies", "Old"}, "cut.mov", -1000);
    add({"Mail"}, "inbox", -400);
    add({}, "notes.txt", 20).action = ChangeAction::grew;
    ASSERT_TRUE(show());
    EXPECT_THAT(names(), ElementsAre("Home"));
    ASSERT_TRUE(open(0));
    EXPECT_THAT(names(), ElementsAre("Movies", "Mail", "notes.txt"));
    const ExplorerRow& movies = explorer_.rows()->rows()[0];
    EXPECT_EQ(movies.added, "+3.0 kB");
    EXPECT_EQ(movies.hint, "Home/Movies\n3,000 bytes added, 1,000 bytes freed");
    EXPECT_EQ(movies.freed, "−1.0 kB");
    EXPECT_DOUBLE_EQ(movies.addedShare, 0.75);
    EXPECT_DOUBLE_EQ(movies.freedShare, 0.25);
    EXPECT_EQ(movies.description, "2 files");
    const ExplorerRow& mail = explorer_.rows()->rows()[1];
    EXPECT_EQ(mail.added, "");
    EXPECT_DOUBLE_EQ(mail.freedShare, 0.1);
    const ExplorerRow& notes = explorer_.rows()->rows()[2];
    EXPECT_EQ(notes.verb, "Grew");
    EXPECT_EQ(notes.description, "12:00\u202fPM");
    EXPECT_EQ(notes.hint, "Home/notes.txt\n20 bytes added");
    EXPECT_EQ(explorer_.insideText(), "4 files, 3.0 kB added, 1.4 kB freed");

    explorer_.setMode(static_cast<int>(ExplorerMode::files));
    ASSERT_TRUE(settles());
    EXPECT_THAT(names(), ElementsAre("raw.mov", "cut.mov", "inbox", "notes.txt"));
    EXPECT_EQ(explorer_.rows()->rows()[1].description, "12:00\u202fPM · Movies/Old");
    explorer_.setSort(static_cast<int>(FileSort::name));
    ASSERT_TRUE(settles());
    EXPECT_THAT(names(), ElementsAre("cut.mov", "inbox", "notes.txt", "raw.mov"));
}

TEST_F(ExplorerModelTest, BothHalvesOfAMoveTellWhereTheOtherIs) {
    add({"Movies", "Raw"}, "a.mov", -30'000);
    add({"Movies", "Raw"}, "b.mov", -20'000);
    add({"Archive", "Raw\n"}, "a.mov", 30'000);
    add({"Archive", "Raw\n"}, "b.mov", 20'000);
    add({"Mail"}, "inbox", 400);
    ASSERT_TRUE(show());
    ASSERT_TRUE(open(0));
    std::vector<QString> folders;
    for (const ExplorerRow& row : explorer_.rows()->rows()) folders.push_back(row.description);
    EXPECT_THAT(folders, ElementsAre("2 files", "2 files", "1 file")) << "only what lies in them has moved";
    ASSERT_TRUE(open(1));
    const ExplorerRow folder = explorer_.rows()->rows()[0];
    EXPECT_EQ(folder.description, "2 files · Likely moved to Archive/Raw\\n");
    EXPECT_EQ(folder.hint, "Home/Movies/Raw\n50,000 bytes freed\nLikely moved to Archive/Raw\\n");
    EXPECT_TRUE(folder.spoken.contains("Likely moved to"));
    explorer_.setMode(static_cast<int>(ExplorerMode::files));
    explorer_.openCrumb(0);
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.rows()->rows()[1].description,
              "12:00\u202fPM · Home/Archive/Raw\\n · Likely moved from Movies/Raw");
    EXPECT_THAT(explorer_.answer().explanation,
                testing::EndsWith(" 50.0 kB in 2 files likely moved: they count as freed in one place and as "
                                  "added in another."));
}

TEST_F(ExplorerModelTest, GoingUpAndClearingASearchLeadBackToThePlace) {
    for (int i = 0; i < 300; ++i) add({fmt::format("folder {:03}", i)}, "file", 1000 - i);
    add({"folder 250", "inner"}, "photo", 1);
    ASSERT_TRUE(show());
    ASSERT_TRUE(open(0));
    explorer_.turnPage(1);
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.rowsText(), "Rows 201 to 300 of 300");
    EXPECT_TRUE(explorer_.hasPreviousPage());
    EXPECT_FALSE(explorer_.hasNextPage());
    explorer_.setCurrentRow(50);
    explorer_.setScroll(1234);
    const std::string name = names()[50];

    ASSERT_TRUE(open(50));
    EXPECT_EQ(way(), "/All locations/Home/" + name);
    EXPECT_EQ(explorer_.currentRow(), 0);
    EXPECT_EQ(explorer_.scroll(), 0);
    explorer_.goUp();
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.currentRow(), 50);
    EXPECT_EQ(explorer_.scroll(), 1234);
    EXPECT_EQ(names()[50], name);

    explorer_.setSearch("photo");
    ASSERT_TRUE(settles());
    EXPECT_THAT(names(), ElementsAre("folder 250"));
    EXPECT_EQ(way(), "/All locations/Home");
    EXPECT_EQ(explorer_.passingText(), "Matching: 1 file, 1 byte added");
    explorer_.clearSearch();
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.currentRow(), 50);
    EXPECT_EQ(explorer_.scroll(), 1234);

    // Whoever comes from elsewhere finds the folder that they leave.
    selection().setExplorer({.folder = FolderRef{{"home"}, {"folder 004", "inner"}}});
    ASSERT_TRUE(settles());
    explorer_.openCrumb(1);
    ASSERT_TRUE(settles());
    explorer_.turnPage(-1);
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.currentRow(), 0) << "another page begins at its top";
}

TEST_F(ExplorerModelTest, WhoeverCameStraightIntoAFolderFindsItOnTheWayUp) {
    for (const char* name : {"a", "b", "c"}) add({name, "inner"}, "file", 10);
    selection().setExplorer({.folder = FolderRef{{"home"}, {"c", "inner"}}});
    ASSERT_TRUE(show());
    explorer_.openCrumb(1);
    ASSERT_TRUE(settles());
    EXPECT_EQ(names()[static_cast<std::size_t>(explorer_.currentRow())], "c");
}

TEST_F(ExplorerModelTest, NamesAreHarmlessToShowAndStillOpenTheirOwnFolder) {
    add({"caf\xe9"}, "first", 30);
    add({"caf\xe8"}, "second", 20);
    add({"a\nb"}, "third", 10);
    add({"x", "y", "z", "1", "2", "3", "4", "5"}, "deep", 5);
    ASSERT_TRUE(show());
    ASSERT_TRUE(open(0));
    EXPECT_THAT(names(), ElementsAre("caf�", "caf�", "a\\nb", "x"));
    ASSERT_TRUE(open(1));
    EXPECT_THAT(names(), ElementsAre("second"));

    selection().setExplorer({.folder = FolderRef{{"home"}, {"x", "y", "z", "1", "2", "3", "4", "5"}}});
    ASSERT_TRUE(settles());
    EXPECT_EQ(way(), "/All locations/Home/…/2/3/4/5");
    explorer_.openCrumb(2);
    ASSERT_TRUE(settles());
    EXPECT_EQ(selection().explorer().folder->components, (FolderPath{"x", "y", "z", "1"}));
}

TEST_F(ExplorerModelTest, EstimatesHaveASectionOfTheirOwnAndNoPartInSums) {
    add({"Movies"}, "raw.mov", 3000);
    estimate({"Movies"}, "old.mov", 50'000);
    for (int i = 0; i < 201; ++i) estimate({"Old"}, fmt::format("{:03}", i), 1);
    ASSERT_TRUE(show());
    EXPECT_THAT(names(), ElementsAre("Home")) << "estimates are shown when the user wants them";
    shown_.model().settings()->setShowsEstimates(true);
    ASSERT_TRUE(runUntil([&] { return explorer_.rows()->rowCount() == 2; }));
    EXPECT_THAT(names(), ElementsAre("Home", "~Home"));
    EXPECT_EQ(explorer_.insideText(), "1 file, 3.0 kB added");
    EXPECT_EQ(explorer_.estimatesText(),
              "About 50.2 kB in 202 files, from file dates. Not part of the figures above.");
    explorer_.setMode(static_cast<int>(ExplorerMode::files));
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.rows()->rowCount(), 201);
    EXPECT_EQ(explorer_.estimatesRowsText(), "Rows 1 to 200 of 202");
    explorer_.turnEstimatesPage(1);
    ASSERT_TRUE(runUntil([&] { return explorer_.rows()->rowCount() == 3; }));
    EXPECT_EQ(names().front(), "raw.mov");
}

TEST_F(ExplorerModelTest, SaysWhyThereIsNothingAndWhatWouldBringSomething) {
    add({"Movies"}, "raw.mov", 3000);
    ASSERT_TRUE(show());
    explorer_.setSearch("  \t");
    ASSERT_TRUE(settles());
    EXPECT_FALSE(explorer_.isFiltered());
    explorer_.setSearch("no such name");
    explorer_.setDirection(static_cast<int>(DirectionFilter::freed));
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.emptySentence(), "No changes match these filters.");
    EXPECT_EQ(explorer_.emptyActionText(), "Clear filters");
    explorer_.followEmptyAction();
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.emptySentence(), "");

    selection().setExplorer({.folder = FolderRef{{"home"}, {"Mail"}}});
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.emptySentence(), "Nothing changed in this folder.");
    explorer_.followEmptyAction();
    ASSERT_TRUE(settles());
    EXPECT_THAT(names(), ElementsAre("Home"));

    selection().setDay(yesterday);
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.emptySentence(), "Nothing changed.");
    selection().setDay({2026, 3, 2});
    ASSERT_TRUE(settles());
    EXPECT_EQ(explorer_.emptySentence(), "No check covers this day.");

    history_->isBroken = true;
    selection().setDay(today);
    ASSERT_TRUE(runUntil([&] { return explorer_.emptySentence() == "The changes couldn't be read."; }));
}

TEST_F(ExplorerModelTest, APeriodThatTakesLongToReadLeavesTheListEmptyMeanwhile) {
    add({"Movies"}, "raw.mov", 3000);
    ASSERT_TRUE(show());
    std::promise<void> letGo;
    history_->beforeReading = [&, waits = letGo.get_future().share()] { waits.wait(); };
    selection().setDay(yesterday);
    EXPECT_THAT(names(), ElementsAre("Home"));
    ASSERT_TRUE(runUntil([&] { return explorer_.isLoading(); }));
    EXPECT_EQ(explorer_.emptySentence(), "Reading the changes…");
    EXPECT_THAT(names(), IsEmpty());
    letGo.set_value();
    ASSERT_TRUE(settles());
    EXPECT_FALSE(explorer_.isLoading());
}

TEST_F(ExplorerModelTest, AnotherHistoryHasNoPlaceInTheFoldersOfTheFormer) {
    add({"Movies"}, "raw.mov", 3000);
    selection().setExplorer({.folder = FolderRef{{"home"}, {"Movies"}}});
    ASSERT_TRUE(show());
    auto other = std::make_shared<FixedHistory>();
    other->known.today = today;
    other->include("other", "Other", {2026, 2, 1});
    ASSERT_TRUE(shown_.show(other));
    EXPECT_EQ(way(), "/All locations");
}

}  // namespace
}  // namespace brindle
