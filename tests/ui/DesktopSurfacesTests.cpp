#include "app/EventLoop.h"
#include "app/NoticeBoard.h"
#include "app/PrivateBus.h"
#include "app/TrayWatcher.h"
#include "support/TempHistory.h"
#include "ui/Stage.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using namespace std::chrono_literals;
using StartedBy = DesktopSurfaces::StartedBy;

/// A start of the program, on a bus of its own.
class Surfaces : public testing::Test {
protected:
    /// `patience` for the tray, when the login starts the program.
    void start(StartedBy startedBy, std::chrono::milliseconds patience = 1h) {
        settings.sessionBus = bus.connect();
        settings.begin = [=](DesktopSurfaces& surfaces) { surfaces.begin(startedBy, {}, patience); };
        stage.emplace(settings);
    }
    [[nodiscard]] bool isMainWindowShown() { return stage->mainWindow().isVisible(); }
    [[nodiscard]] bool isTrayItemShown() { return stage->surfaces().trayItem().isShown(); }

    PrivateBus bus;
    StageSettings settings;
    std::optional<Stage> stage;
};

TEST_F(Surfaces, AQuietLoginWaitsForTheTrayAndShowsTheWindowWhereThereIsNone) {
    settings.preferences.opensQuietlyAtLogin = true;
    start(StartedBy::login, 600ms);
    EXPECT_FALSE(isMainWindowShown());
    EXPECT_TRUE(runUntil([&] { return isMainWindowShown(); }));
}

TEST_F(Surfaces, AQuietLoginStaysQuietWithATrayThatComesLater) {
    settings.preferences.opensQuietlyAtLogin = true;
    start(StartedBy::login);
    TrayWatcher watcher(bus.connect());
    watcher.setHost(true);
    EXPECT_TRUE(runUntil([&] { return isTrayItemShown(); }));
    EXPECT_FALSE(isMainWindowShown());

    // Without its item in the tray, and with it again.
    stage->model().settings()->setShowsMenuBarItem(false);
    EXPECT_FALSE(isTrayItemShown());
    stage->model().settings()->setShowsMenuBarItem(true);
    EXPECT_TRUE(isTrayItemShown());
    stage->model().openMainWindow();
    EXPECT_TRUE(isMainWindowShown());
}

TEST_F(Surfaces, EveryOtherStartShowsTheWindowAtOnce) {
    start(StartedBy::login);
    EXPECT_TRUE(isMainWindowShown()) << "the user did not ask for a quiet one";
    stage.reset();
    settings.preferences.opensQuietlyAtLogin = true;
    start(StartedBy::user);
    EXPECT_TRUE(isMainWindowShown()) << "by the user";
    stage.reset();
    settings.preferences.showsMenuBarItem = false;
    start(StartedBy::login);
    EXPECT_TRUE(isMainWindowShown()) << "there would be nothing else";
}

TEST_F(Surfaces, ClosingTheWindowTellsOnceHowToReachBrindle) {
    NoticeBoard board(bus.connect());
    start(StartedBy::user);
    stage->window().close();
    EXPECT_TRUE(runUntil([&] { return !board.notices.isEmpty(); }));
    EXPECT_TRUE(board.notices.front().startsWith("new: Brindle is still running: "));
    EXPECT_TRUE(runUntil([&] {
        board.choose();
        return isMainWindowShown();
    }));
    stage->window().close();
    stage->settle();
    EXPECT_EQ(board.notices.size(), 1);
}

TEST_F(Surfaces, ANoticeAboutTheHistoryLeadsToThePageThatExplainsIt) {
    NoticeBoard board(bus.connect());
    settings.isExample = false;
    settings.preferences.notifiesAboutGrowth = true;
    settings.now += 8 * 86'400;
    settings.prepare = [](const std::string& data) {
        TempHistory history;
        history.include("home");
        history.check("home", {{"a", 1}});
        history.close();
        std::filesystem::copy(history.directory(), data);
    };
    start(StartedBy::user);
    stage->model().checkNow();
    ASSERT_TRUE(runUntil([&] { return !board.notices.isEmpty(); }));
    EXPECT_TRUE(board.notices.front().startsWith("new: “home” can't be found: It was last checked on "));
    stage->window().hide();
    ASSERT_TRUE(runUntil([&] {
        board.choose();
        return isMainWindowShown();
    }));
    EXPECT_EQ(stage->model().selection()->destination(), Destination::locations);
}

TEST_F(Surfaces, NothingIsToldOfClosingWhereTheTrayShowsBrindleOrItEnds) {
    NoticeBoard board(bus.connect());
    start(StartedBy::user);
    stage->mainWindow().hide();
    stage->mainWindow().show();
    TrayWatcher watcher(bus.connect());
    watcher.setHost(true);
    EXPECT_TRUE(runUntil([&] { return isTrayItemShown(); }));
    stage->window().close();
    EXPECT_FALSE(isMainWindowShown());
    stage->settle();
    EXPECT_TRUE(board.notices.isEmpty());
}

}  // namespace
}  // namespace brindle
