#include "app/pages/FixedHistory.h"
#include "app/pages/OverviewModel.h"
#include "app/pages/ShownHistory.h"
#include "ui/Keyboard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr LocalDay today{2026, 3, 7};

TEST(OverviewPage, TheKeyboardComesToEveryFigureInReadingOrderAndToWhatIsBehindIt) {
    auto history = std::make_shared<FixedHistory>();
    history->known.today = today;
    history->include("home", "Home", {2026, 2, 1}).lastCheck = 1'772'884'800;
    history->known.volumes.push_back(
        {.id = "drive", .name = "Disk", .totalBytes = 4000, .freeBytes = 1000, .availableBytes = 1000});
    history->record("home", today, {"Movies"}, 3000);
    history->record("home", today, {"Downloads"}, -1000);
    ShownHistory shown;
    OverviewModel overview(shown.model());
    ASSERT_TRUE(shown.show(history));
    ASSERT_TRUE(runUntil([&] { return overview.contributors()->rowCount() == 2; }));

    Scene scene;
    scene.show("OverviewPage { widthClass: 1; focus: true }", {1180, 760},
               {{"model", QVariant::fromValue(&overview)}});
    EXPECT_THAT(
        tabbedNames(scene),
        ElementsAre("Net change: +2.0 kB", "Added: +3.0 kB", "Freed: \u22121.0 kB", "2 files changed",
                    "Added: +3.0 kB", "Freed: \u22121.0 kB", "Changes by day", "Movies, +3.0 kB, 0 bytes",
                    "Downloads, 0 bytes, \u22121.0 kB", "Disk, 3.0 kB of 4.0 kB used, 1.0 kB available"));

    // Around again, to the freed bytes of today.
    Selection& selection = *shown.model().selection();
    ASSERT_TRUE(tabTo(scene, "Freed: \u22121.0 kB"));
    scene.press(Qt::Key_Return);
    EXPECT_EQ(selection.destination(), Destination::activity);
    EXPECT_EQ(selection.explorer().direction, DirectionFilter::freed);
    EXPECT_EQ(selection.firstDay(), today);
    ASSERT_TRUE(tabTo(scene, "Changes by day"));
    scene.press(Qt::Key_Left);
    scene.press(Qt::Key_Return);
    EXPECT_EQ(selection.day(), (LocalDay{2026, 3, 6}));
    EXPECT_THAT(scene.warnings(), IsEmpty());
}

TEST(OverviewPage, WhatTheKeyboardComesToIsInSight) {
    auto history = std::make_shared<FixedHistory>();
    history->known.today = today;
    history->include("home", "Home", {2026, 2, 1}).lastCheck = 1'772'884'800;
    for (int i = 0; i < 9; ++i) history->record("home", today, {"Folder " + std::to_string(i)}, 1000 + i);
    ShownHistory shown;
    OverviewModel overview(shown.model());
    ASSERT_TRUE(shown.show(history));
    ASSERT_TRUE(runUntil([&] { return overview.contributors()->rowCount() == 5; }));
    Scene scene;
    QQuickItem& page = scene.show("OverviewPage { widthClass: 0; focus: true }", {960, 400},
                                  {{"model", QVariant::fromValue(&overview)}});
    for (int i = 0; i < 20; ++i) {
        scene.press(Qt::Key_Tab);
        const QQuickItem& item = *scene.window().activeFocusItem();
        const QRectF place = item.mapRectToItem(&page, QRectF(0, 0, item.width(), item.height()));
        EXPECT_TRUE(QRectF(0, 0, page.width(), page.height()).contains(place)) << focusedName(scene);
    }
    scene.press(Qt::Key_PageUp);
    scene.press(Qt::Key_PageUp);
    EXPECT_EQ(page.property("contentY").toDouble(), 0);
    scene.press(Qt::Key_PageDown);
    EXPECT_GT(page.property("contentY").toDouble(), 0);
}

}  // namespace
}  // namespace brindle
