#include "app/EventLoop.h"
#include "app/pages/DrivesModel.h"
#include "app/pages/ShownHistory.h"
#include "model/Translation.h"
#include "ui/CutTexts.h"
#include "ui/Keyboard.h"
#include "ui/PseudoLocale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// The page with its sheets, on a history with a location that was checked and one that was not.
class DrivesPage : public testing::Test {
protected:
    DrivesPage() {
        stored_.include("home");
        stored_.check("home", {{"file", 1000}}, {.unreadable = {{"Private", true}}});
        stored_.include("new");
        stored_.store().setStatus({"new"}, LocationStatus::disconnected).get();
        stored_.close();
    }

    void show(QSize size = {1180, 900}) {
        ASSERT_TRUE(shown_.open(stored_.directory()));
        drives_ = std::make_unique<DrivesModel>(shown_.model(), shown_.tracking());
        scene_.show(
            "FocusScope { id: all; required property var model; focus: true\n"
            "DrivesPage { anchors.fill: parent; widthClass: 1; focus: true; model: all.model }\n"
            "LocationDialogs { model: all.model.actions } }",
            size, {{"model", QVariant::fromValue(drives_.get())}});
    }

    [[nodiscard]] bool isSheetOpen() { return drives_->actions()->sheet() != LocationActionsModel::NoSheet; }
    /// Waits for a sheet, or for none, and for the keyboard to be where it is to be then.
    [[nodiscard]] bool keyboardComesTo(const std::string& name) {
        return runUntil([&] { return focusedName(scene_) == name; });
    }
    /// The sheet in which a drive is chosen, with these in the place of the computer's own.
    [[nodiscard]] bool offerDrives(const std::vector<DriveChoice>& drives) {
        LocationActionsModel& actions = *drives_->actions();
        if (!runUntil([&] { return actions.text() != translated("Looking for drives…"); })) return false;
        actions.takeDrives(drives);
        return true;
    }
    [[nodiscard]] static std::vector<DriveChoice> manyDrives(int count) {
        std::vector<DriveChoice> drives;
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(i);
            drives.push_back(
                {.drive = {.id = number, .name = "Disk " + number, .mountPath = "/mnt/" + number},
                 .totalBytes = i * 1'000'000'000LL});
        }
        drives.push_back({.drive = {.id = "x", .name = "Server", .mountPath = "/mnt/server"},
                          .reason = "Brindle can only check folders on drives connected to this computer."});
        return drives;
    }

    TempHistory stored_;
    ShownHistory shown_;
    std::unique_ptr<DrivesModel> drives_;
    Scene scene_;
};

TEST_F(DrivesPage, TheKeyboardComesToEveryActionInReadingOrder) {
    show();
    EXPECT_THAT(tabbedNames(scene_),
                ElementsAre("Add Folder…", "Add Drive…", "Show in Files", "Stop Tracking…",
                            "1 folder couldn't be read", "Choose Again…", "Forget…"));
    int asked = 0;
    QObject::connect(drives_->actions(), &LocationActionsModel::folderRequested, [&] { ++asked; });
    for (const char* name : {"Add Folder…", "Choose Again…"}) {
        ASSERT_TRUE(tabTo(scene_, name));
        scene_.press(Qt::Key_Return);
    }
    EXPECT_EQ(asked, 2);
    EXPECT_THAT(scene_.warnings(), IsEmpty());
}

TEST_F(DrivesPage, ALocationIsShownAndItsUnreadableFoldersAreOpened) {
    show();
    std::vector<std::string> revealed;
    QObject::connect(drives_.get(), &DrivesModel::revealRequested,
                     [&](const std::string& path) { revealed.push_back(path); });
    ASSERT_TRUE(tabTo(scene_, "Show in Files"));
    scene_.press(Qt::Key_Return);
    EXPECT_THAT(revealed, ElementsAre(shown_.model().records().front().path));
    ASSERT_TRUE(tabTo(scene_, "1 folder couldn't be read"));
    scene_.press(Qt::Key_Return);
    EXPECT_EQ(drives_->unreadable()->rowCount(), 1);
    // The list, or its row at once where that is there already.
    EXPECT_THAT(tabbedNames(scene_),
                Contains(AnyOf("Folders that couldn't be read", "Private, Access was refused")));
}

TEST_F(DrivesPage, WhatTakesSomethingAwayIsNeverWhatReturnDoes) {
    show();
    const std::pair<const char*, const char*> kept[] = {{"Stop Tracking…", "Keep Tracking"},
                                                        {"Forget…", "Cancel"}};
    for (const auto& [action, keep] : kept) {
        ASSERT_TRUE(tabTo(scene_, action));
        scene_.press(Qt::Key_Return);
        ASSERT_TRUE(keyboardComesTo(keep)) << action;
        scene_.press(Qt::Key_Return);
        EXPECT_FALSE(isSheetOpen());
        ASSERT_TRUE(keyboardComesTo(action)) << "the keyboard is where it was";
        scene_.press(Qt::Key_Return);
        ASSERT_TRUE(keyboardComesTo(keep));
        scene_.press(Qt::Key_Escape);
        EXPECT_FALSE(isSheetOpen());
        ASSERT_TRUE(keyboardComesTo(action));
    }
    EXPECT_EQ(drives_->locations()->rowCount(), 2);

    // Both are taken away by the keyboard; then the page offers to include a folder.
    const std::pair<const char*, const char*> taken[] = {{"Stop Tracking…", "Stop Tracking"},
                                                         {"Forget…", "Forget"}};
    for (const auto& [action, confirm] : taken) {
        const int before = drives_->locations()->rowCount();
        ASSERT_TRUE(tabTo(scene_, action));
        scene_.press(Qt::Key_Return);
        ASSERT_TRUE(runUntil([&] { return isSheetOpen(); }));
        ASSERT_TRUE(tabTo(scene_, confirm));
        scene_.press(Qt::Key_Return);
        ASSERT_TRUE(runUntil([&] { return drives_->locations()->rowCount() < before; }));
    }
    EXPECT_THAT(tabbedNames(scene_), ElementsAre("Add Drive…", "Add Folder…"));
    EXPECT_THAT(scene_.warnings(), IsEmpty());
}

TEST_F(DrivesPage, EveryDriveCanBeReachedInALongList) {
    show();
    ASSERT_TRUE(tabTo(scene_, "Add Drive…"));
    scene_.press(Qt::Key_Return);
    ASSERT_TRUE(keyboardComesTo("Close"));
    ASSERT_TRUE(offerDrives(manyDrives(15)));
    std::vector<std::string> included;
    for (int i = 1; i <= 15; ++i) included.push_back("Include “Disk " + std::to_string(i) + "”");
    ASSERT_TRUE(tabTo(scene_, included.front()));
    for (const std::string& name : included) {
        EXPECT_EQ(focusedName(scene_), name);
        const QQuickItem& item = *scene_.window().activeFocusItem();
        const QQuickItem* list = item.parentItem()->parentItem()->parentItem()->parentItem();
        EXPECT_TRUE(QRectF(0, 0, list->width(), list->height())
                        .contains(item.mapRectToItem(list, {0, 0, item.width(), item.height()})))
            << name << " is scrolled to";
        scene_.press(Qt::Key_Tab);
    }
    EXPECT_EQ(focusedName(scene_), "Close");
    scene_.press(Qt::Key_Escape);
    EXPECT_TRUE(keyboardComesTo("Add Drive…"));
}

TEST_F(DrivesPage, CutsNoTextWhereItIsSmallAndTheTextIsLargeAndLong) {
    const PseudoLocale locale;
    ASSERT_TRUE(locale.isMade());
    scene_.settings().setTextSize(TextSize::extraLarge);
    show({960, 680});
    const auto cut = [&] { return cutTexts(*scene_.window().contentItem(), BeyondTheEdge::scrollsIntoView); };
    EXPECT_EQ(cut(), "");
    LocationActionsModel& actions = *drives_->actions();
    actions.addDrive();
    ASSERT_TRUE(offerDrives(manyDrives(12)));
    ASSERT_TRUE(keyboardComesTo(actions.dismissTitle().toStdString()));
    EXPECT_EQ(cut(), "");
    actions.stopTracking("home");
    ASSERT_TRUE(keyboardComesTo(actions.dismissTitle().toStdString()));
    EXPECT_EQ(cut(), "");
}

}  // namespace
}  // namespace brindle
