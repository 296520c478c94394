#include "app/EventLoop.h"
#include "ui/CutTexts.h"
#include "ui/PseudoLocale.h"
#include "ui/Stage.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace brindle {
namespace {

/// The mini window on its own, with the example behind it.
class MiniWindowTest : public testing::Test {
protected:
    MiniWindowTest() {
        settings.begin = [](DesktopSurfaces&) {};
    }
    QQuickWindow& open() {
        if (!stage) stage.emplace(settings);
        stage->model().setMiniWindowOpen(true);
        stage->settle();
        return *stage->surfaces().miniWindow().window();
    }
    [[nodiscard]] bool isOpen() {
        return stage->model().isMiniWindowOpen() && stage->surfaces().miniWindow().window()->isVisible();
    }

    StageSettings settings;
    std::optional<Stage> stage;
};

TEST_F(MiniWindowTest, IsKeptAndComesBackToItsPlace) {
    QQuickWindow& window = open();
    EXPECT_EQ(window.size(), QSize(300, 176));
    const QRect screen = window.screen()->availableGeometry();
    EXPECT_LE((window.geometry().center() - screen.center()).manhattanLength(), 2);

    // The window system's answer is what counts as moved; the position itself says so at once.
    bool isMoved = false;
    QObject::connect(&window, &QWindow::yChanged, &window, [&](int y) { isMoved = y == 30; });
    window.setPosition(40, 30);
    ASSERT_TRUE(runUntil([&] { return isMoved; }));
    window.close();
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(stage->model().settings()->miniWindowFrame(), "40 30 300 176");
    EXPECT_EQ(&open(), &window);
    EXPECT_EQ(window.position(), QPoint(40, 30));
    stage.reset();

    // Another start, with larger texts.
    settings.preferences.miniWindowFrame = "40 30 300 176";
    settings.preferences.textSize = TextSize::extraLarge;
    QQuickWindow& later = open();
    EXPECT_EQ(later.position(), QPoint(40, 30));
    EXPECT_GT(later.width(), 300);
}

TEST_F(MiniWindowTest, FollowsThePreferenceToStayOnTop) {
    QQuickWindow& window = open();
    EXPECT_FALSE(window.flags().testFlag(Qt::WindowStaysOnTopHint));
    stage->model().settings()->setMiniWindowKeepsOnTop(true);
    EXPECT_TRUE(window.flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(isOpen());
    stage->model().settings()->setMiniWindowKeepsOnTop(false);
    EXPECT_FALSE(window.flags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(MiniWindowTest, IsUsedWithTheKeyboard) {
    QQuickWindow& window = open();
    window.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Tab);
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_TRUE(stage->model().settings()->miniWindowKeepsOnTop()) << "the pin is first";
    QTest::keyClick(&window, Qt::Key_0, Qt::ControlModifier);
    EXPECT_TRUE(stage->mainWindow().isVisible());

    window.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
}

TEST_F(MiniWindowTest, CutsNoTextWhereTextIsLargeAndLong) {
    const PseudoLocale locale;
    ASSERT_TRUE(locale.isMade());
    for (const TextSize size : {TextSize::standard, TextSize::extraLarge})
        for (const bool isSetUp : {true, false}) {
            settings.preferences.textSize = size;
            settings.preferences.startupSetupCompleted = isSetUp;
            settings.isExample = isSetUp;
            stage.emplace(settings);
            EXPECT_EQ(cutTexts(*open().contentItem()), "");
            stage->model().settings()->setChecksPaused(false);
            EXPECT_EQ(cutTexts(*open().contentItem()), "");
            stage.reset();
        }
}

}  // namespace
}  // namespace brindle
