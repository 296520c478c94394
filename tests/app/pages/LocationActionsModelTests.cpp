#include "app/TrackedFolders.h"
#include "app/pages/DrivesModel.h"
#include "app/pages/FixedHistory.h"
#include "app/pages/ListColumns.h"
#include "support/TestMounts.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The page of drives and folders, on real folders.
class LocationActions : public TrackedFolders {
protected:
    DrivesModel& page() {
        if (!page_) page_ = std::make_unique<DrivesModel>(model(), tracking());
        return *page_;
    }
    LocationActionsModel& actions() { return *page().actions(); }

    /// What the user's choice leads to: a sheet, or a change.
    [[nodiscard]] bool choose(const std::string& path) {
        const int before = changes_;
        actions().takeFolder(path);
        return runUntil(
            [&] { return actions().sheet() != LocationActionsModel::NoSheet || changes_ > before; });
    }
    [[nodiscard]] std::string text() { return actions().text().toStdString(); }
    [[nodiscard]] std::string title() { return actions().title().toStdString(); }

    std::unique_ptr<DrivesModel> page_;
};

TEST_F(LocationActions, AnOverlapIsExplainedBeforeAnythingIsStored) {
    ASSERT_TRUE(open(false));
    write("home/inner/a", 1);
    int chosen = 0;
    QObject::connect(&actions(), &LocationActionsModel::folderRequested, [&] { ++chosen; });
    actions().addFolder();
    EXPECT_EQ(chosen, 1);

    ASSERT_TRUE(choose(folder_.path().string()));
    EXPECT_EQ(actions().sheet(), LocationActionsModel::Asking);
    EXPECT_FALSE(actions().isDestructive());
    EXPECT_THAT(text(), HasSubstr("contains “home”, which Brindle already checks."));
    EXPECT_EQ(model().records().size(), 1U);
    actions().dismiss();
    actions().confirm();  // no question is open any more
    EXPECT_FALSE(tracking().isChanging());

    ASSERT_TRUE(choose(path("home/inner")));
    EXPECT_EQ(actions().sheet(), LocationActionsModel::Telling);
    EXPECT_EQ(text(), "“inner” is already checked as part of “home”.");
    actions().confirm();
    EXPECT_EQ(chosen, 2) << "another may be chosen at once";
    ASSERT_TRUE(choose(path("missing")));
    EXPECT_EQ(title(), "This folder can't be included");
    EXPECT_THAT(text(), HasSubstr("isn't there."));
    actions().dismiss();

    write("music/song", 5);
    ASSERT_TRUE(choose(path("music")));
    EXPECT_EQ(actions().sheet(), LocationActionsModel::NoSheet) << "nothing has to be explained";
    EXPECT_THAT(texts(*page().locations(), "name"), ElementsAre("home", "music"));
    ASSERT_TRUE(choose(folder_.path().string()));
    EXPECT_THAT(text(), HasSubstr("contains 2 locations"));
    actions().confirm();
    ASSERT_TRUE(changesAreMade());
    EXPECT_EQ(page().locations()->rowCount(), 3);
}

TEST_F(LocationActions, ALocationIsStoppedOrBeforeItsFirstCheckForgotten) {
    ASSERT_TRUE(open(false));
    write("music/song", 5);
    ASSERT_TRUE(choose(path("music")));
    EXPECT_THAT(numbers(*page().locations(), "canStop"), ElementsAre(1, 0));
    EXPECT_THAT(numbers(*page().locations(), "canForget"), ElementsAre(0, 1));
    EXPECT_THAT(numbers(*page().locations(), "canChooseAgain"), ElementsAre(0, 0));
    EXPECT_EQ(texts(*page().locations(), "lastCheck").back(), "Not checked yet");

    actions().stopTracking("no such location");
    EXPECT_EQ(actions().sheet(), LocationActionsModel::NoSheet);
    actions().forget(column(*page().locations(), "location").at(1).toString());
    EXPECT_EQ(title(), "Forget “music”?");
    EXPECT_TRUE(actions().isDestructive());
    model().selection()->setScope({known("music")->id});
    actions().confirm();
    ASSERT_TRUE(changesAreMade());
    EXPECT_FALSE(model().selection()->scope().location) << "nobody looks at what is not there any more";

    actions().stopTracking("home");
    EXPECT_EQ(title(), "Stop tracking “home”?");
    EXPECT_THAT(text(), HasSubstr("What was recorded stays in the history and can still be read."));
    EXPECT_TRUE(actions().isDestructive());
    actions().dismiss();
    EXPECT_TRUE(page().hasLocations());
    actions().stopTracking("home");
    actions().confirm();
    ASSERT_TRUE(changesAreMade());
    EXPECT_FALSE(page().hasLocations());
    ASSERT_EQ(model().history().locations.size(), 1U) << "it has days that can be read";
    EXPECT_TRUE(model().history().locations.front().trackingEnd);
    EXPECT_EQ(model().mode(), AppMode(PlainMode::tracking));

    ASSERT_TRUE(choose(path("home")));
    ASSERT_TRUE(runUntil([&] { return page().hasLocations(); })) << "and it can be included anew";
}

TEST_F(LocationActions, AFolderThatIsNotFoundIsChosenAgainAndWhatThatChangesIsSaid) {
    write("home/b", 5);
    ASSERT_TRUE(open(true));
    write("copy/a", 1000);
    write("other/c", 1000);
    fs::remove_all(path("home"));
    model().session().refreshStatuses();
    ASSERT_TRUE(runUntil([&] { return numbers(*page().locations(), "canChooseAgain").at(0) == 1; }));

    actions().chooseAgain("home");
    ASSERT_TRUE(choose(path("other")));
    EXPECT_EQ(title(), "This folder can't be used");
    actions().confirm();
    ASSERT_TRUE(choose(path("copy")));
    EXPECT_EQ(title(), "Use this folder for “home”?");
    EXPECT_THAT(text(), HasSubstr("Of the 2 files last seen in “home”, about 1 aren't in “copy”."));
    EXPECT_TRUE(actions().isDestructive());
    actions().confirm();
    ASSERT_TRUE(changesAreMade());
    ASSERT_TRUE(runUntil([&] { return model().ownToday().totals.freed == 5; }));
    EXPECT_THAT(texts(*page().locations(), "path"), ElementsAre(path("copy")));
    EXPECT_THAT(numbers(*page().locations(), "canChooseAgain"), ElementsAre(0));
}

TEST_F(LocationActions, AFailureIsToldInASheetOrBesideTheOneThatIsOpen) {
    ASSERT_TRUE(open(false));
    write("music/song", 5);
    std::vector<std::string> notes;
    QObject::connect(&model(), &AppModel::noted,
                     [&](const QString& sentence) { notes.push_back(sentence.toStdString()); });
    const LocationRecord music = record("music");
    (void)rowsOf(data() + "/History.sqlite",
                 "CREATE TRIGGER failing BEFORE INSERT ON locations BEGIN SELECT RAISE(ABORT, 'no'); END");
    ASSERT_TRUE(choose(path("music")));
    EXPECT_EQ(title(), "Nothing was changed");
    EXPECT_THAT(text(), HasSubstr("Couldn't include “music”. "));
    EXPECT_EQ(actions().confirmTitle(), "");
    EXPECT_THAT(notes, IsEmpty());

    actions().addDrive();
    Q_EMIT tracking().refused("The drives can't be told.");
    EXPECT_EQ(text(), "The drives can't be told.");

    actions().stopTracking("home");
    tracking().include(music);
    ASSERT_TRUE(runUntil([&] { return notes.size() == 1; }));
    EXPECT_EQ(title(), "Stop tracking “home”?");
}

TEST_F(LocationActions, AChangeThatHasToWaitSaysForWhat) {
    ASSERT_TRUE(open(false));
    write("music/song", 5);
    (void)page();
    ASSERT_TRUE(holdCheckOf("home"));
    actions().takeFolder(path("music"));
    ASSERT_TRUE(runUntil([&] { return !actions().waitingText().isEmpty(); }));
    EXPECT_EQ(actions().waitingText(), "Your change is made as soon as the check of “home” is over.");
    letGo();
    ASSERT_TRUE(changesAreMade());
    EXPECT_EQ(actions().waitingText(), "");
}

TEST_F(LocationActions, NothingOfTheUsersIsChangedFromTheExample) {
    ASSERT_TRUE(open(false));
    actions().stopTracking("home");
    auto example = std::make_shared<FixedHistory>();
    example->known.isExample = true;
    example->include("home", "Home", {2026, 1, 1});
    ASSERT_TRUE(shown_.show(example));
    EXPECT_EQ(actions().sheet(), LocationActionsModel::NoSheet);
    EXPECT_FALSE(actions().isOffered());
    for (const char* flag : {"canStop", "canForget", "canChooseAgain"})
        EXPECT_THAT(numbers(*page().locations(), flag), ElementsAre(0)) << flag;
    actions().confirm();
    actions().addFolder();
    actions().addDrive();
    actions().takeFolder(path("data"));
    actions().stopTracking("home");
    EXPECT_EQ(actions().sheet(), LocationActionsModel::NoSheet);
    EXPECT_FALSE(tracking().isChanging());
}

TEST_F(LocationActions, ADriveIsChosenFromThoseThatAreMounted) {
    SKIP_UNLESS_MOUNTS_WORK();
    ASSERT_TRUE(open(false));
    fs::create_directories(path("stick"));
    if (!makeImage(path("image"), "ext4", "-L STICK")) GTEST_SKIP() << "no tools to make an image";
    const TestMount stick = TestMount::image(path("image"), path("stick"));
    write("stick/photo", 700);
    const auto place = [&] {
        const auto paths = texts(*actions().drives(), "mountPath");
        return static_cast<int>(std::ranges::find(paths, path("stick")) - paths.begin());
    };
    actions().addDrive();
    EXPECT_EQ(actions().sheet(), LocationActionsModel::ChoosingDrive);
    ASSERT_TRUE(runUntil([&] { return place() < actions().drives()->rowCount(); }));
    EXPECT_THAT(texts(*actions().drives(), "size").at(static_cast<std::size_t>(place())), HasSubstr(" MB"));
    actions().includeDrive(place());
    ASSERT_TRUE(runUntil([&] { return known("stick").has_value(); }));
    EXPECT_EQ(actions().sheet(), LocationActionsModel::NoSheet);
    EXPECT_EQ(known("stick")->kind, LocationKind::volume);

    actions().addDrive();
    EXPECT_EQ(text(), "Looking for drives…");
    ASSERT_TRUE(runUntil([&] { return text() != "Looking for drives…"; }));
    EXPECT_EQ(place(), actions().drives()->rowCount()) << "it is included";
}

}  // namespace
}  // namespace brindle
