#include "app/EventLoop.h"
#include "support/HookedTree.h"
#include "support/TempHistory.h"
#include "ui/CutTexts.h"
#include "ui/PseudoLocale.h"
#include "ui/Stage.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QTest>
#include <atomic>
#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// A new user's home folder.
class SetupView : public testing::Test {
protected:
    SetupView() {
        std::ofstream(home_.path() / "letter") << std::string(2000, 'x');
        ::setenv("HOME", home_.path().c_str(), 1);
    }
    ~SetupView() override { before_.empty() ? ::unsetenv("HOME") : ::setenv("HOME", before_.c_str(), 1); }

    [[nodiscard]] StageSettings firstStart() {
        StageSettings settings{.isExample = false};
        settings.preferences.startupSetupCompleted = false;
        settings.trees = [this] {
            return std::make_unique<HookedTree>([this](const std::string&) {
                while (areWalksHeld_) std::this_thread::sleep_for(std::chrono::milliseconds(5));
            });
        };
        return settings;
    }
    [[nodiscard]] static std::string focused(Stage& stage) {
        QQuickItem* item = stage.window().activeFocusItem();
        auto* reader = item == nullptr ? nullptr : QAccessible::queryAccessibleInterface(item);
        return reader == nullptr ? std::string() : reader->text(QAccessible::Name).toStdString();
    }
    [[nodiscard]] static bool comesTo(Stage& stage, const std::string& name) {
        return runUntil([&] { return focused(stage) == name; });
    }
    static void press(Stage& stage, Qt::Key key) { QTest::keyClick(&stage.window(), key); }
    /// Moves the keyboard on to the item of this name.
    [[nodiscard]] static bool tabTo(Stage& stage, const std::string& name) {
        for (int i = 0; i < 40 && focused(stage) != name; ++i) press(stage, Qt::Key_Tab);
        return focused(stage) == name;
    }
    [[nodiscard]] static SetupModel& setup(Stage& stage) { return stage.mainWindow().setup(); }
    /// Calls `look` in every phase.
    void throughEveryPhase(Stage& stage, const std::function<void(const std::string&)>& look) {
        stage.settle();
        look("welcome");
        setup(stage).goOn();
        stage.settle();
        look("nothing chosen");
        setup(stage).locations()->include("/proc");
        ASSERT_TRUE(runUntil([&] { return setup(stage).locations()->message() != ""; }));
        setup(stage).locations()->includeSuggestion(0);
        ASSERT_TRUE(runUntil([&] { return setup(stage).locations()->hasChosen(); }));
        setup(stage).locations()->include("/proc");
        stage.settle();
        look("chosen");
        setup(stage).goOn();
        stage.settle();
        look("startup");
        areWalksHeld_ = true;
        setup(stage).goOn();
        ASSERT_TRUE(runUntil([&] { return stage.model().isChecking(); }));
        stage.settle();
        look("running");
        setup(stage).check()->stop();
        areWalksHeld_ = false;
        ASSERT_TRUE(runUntil([&] { return setup(stage).check()->state() == FirstCheckModel::Stopped; }));
        stage.settle();
        look("stopped");
    }

    TempFolder home_;
    std::atomic<bool> areWalksHeld_ = false;
    std::string before_ = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
};

TEST_F(SetupView, TheKeyboardAloneLeadsToTheOverview) {
    Stage stage(firstStart());
    ASSERT_TRUE(QTest::qWaitForWindowActive(&stage.window()));
    ASSERT_TRUE(comesTo(stage, "Get started"));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(comesTo(stage, "Include: Your home folder"));
    press(stage, Qt::Key_Escape);
    EXPECT_EQ(setup(stage).phase(), SetupModel::Locations) << "there is nothing to go back to";
    press(stage, Qt::Key_Space);
    ASSERT_TRUE(comesTo(stage, "Continue")) << "the button that was pressed is gone";

    ASSERT_TRUE(tabTo(stage, "Take out: " + home_.path().filename().string()));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(runUntil([&] { return !setup(stage).locations()->hasChosen(); }));
    ASSERT_TRUE(tabTo(stage, "Include: Your home folder"));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(comesTo(stage, "Continue"));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(comesTo(stage, "Start the first check"));
    ASSERT_TRUE(tabTo(stage, "Estimate history from before Brindle"));
    press(stage, Qt::Key_Space);
    EXPECT_TRUE(stage.model().settings()->showsEstimates());
    ASSERT_TRUE(tabTo(stage, "Back"));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(comesTo(stage, "Continue"));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(comesTo(stage, "Start the first check"));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(runUntil([&] { return stage.model().mode() == AppMode(PlainMode::tracking); }));
    EXPECT_GE(stage.model().records().front().trackedBytes, 2000);
    EXPECT_TRUE(runUntil([&] { return stage.named("Step 4 of 4") == nullptr; }));
}

TEST_F(SetupView, OpensFromTheExampleAndTheExampleFromIt) {
    StageSettings settings = firstStart();
    settings.isExample = true;
    Stage stage(settings);
    const auto click = [&](const char* name) {
        QQuickItem* button = stage.named(name);
        ASSERT_NE(button, nullptr) << name;
        QTest::mouseClick(&stage.window(), Qt::LeftButton, {},
                          button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    };
    click("Set up Brindle");
    ASSERT_TRUE(runUntil([&] { return stage.named("Step 1 of 4") != nullptr; }));
    EXPECT_EQ(stage.named("Status"), nullptr);
    stage.settle();
    click("Explore example history");
    ASSERT_TRUE(runUntil([&] { return stage.named("Set up Brindle") != nullptr; }));
}

TEST_F(SetupView, EscapeLeadsBackToThePagesWhereThereAreSome) {
    StageSettings settings = firstStart();
    settings.preferences.startupSetupCompleted = true;
    settings.prepare = [](const std::string& data) {
        TempHistory history;
        history.include("Documents");
        history.check("Documents", {{"a", 1000}});
        history.close();
        fs::copy(history.directory(), data);
    };
    Stage stage(settings);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&stage.window()));
    stage.model().showSetup();
    ASSERT_TRUE(comesTo(stage, "Get started"));
    press(stage, Qt::Key_Return);
    ASSERT_TRUE(comesTo(stage, "Continue"));
    stage.model().checkNow();
    ASSERT_TRUE(runUntil([&] { return stage.model().lastRun().has_value(); }));
    stage.settle();
    EXPECT_EQ(focused(stage), "Continue") << "a check behind the screens is none of theirs";
    press(stage, Qt::Key_Escape);
    EXPECT_FALSE(stage.model().isSetupShown());
    EXPECT_TRUE(runUntil([&] { return stage.named("Status") != nullptr; }));
}

TEST_F(SetupView, CutsNoTextWhereItIsSmallAndTheTextIsLargeAndLong) {
    const PseudoLocale locale;
    ASSERT_TRUE(locale.isMade());
    StageSettings settings = firstStart();
    settings.preferences.textSize = TextSize::extraLarge;
    Stage stage(settings);
    stage.window().resize(960, 680);
    throughEveryPhase(stage, [&](const std::string& name) {
        EXPECT_EQ(cutTexts(*stage.window().contentItem(), BeyondTheEdge::scrollsIntoView), "") << name;
        if (const char* folder = std::getenv("BRINDLE_PICTURES"))
            stage.picture().save(
                QString::fromStdString(std::string(folder) + "/setup-long-" + name + ".png"));
    });
}

TEST_F(SetupView, IsMirroredAsAWhole) {
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    {
        Stage stage(firstStart());
        throughEveryPhase(stage, [&](const std::string& name) {
            const QQuickItem* example = stage.named("Explore example history");
            QQuickItem* main =
                stage.named(setup(stage).check()->isRunning() ? "Stop" : setup(stage).goOnTitle());
            ASSERT_TRUE(example != nullptr && main != nullptr) << name;
            EXPECT_GT(example->mapToScene({}).x(), main->mapToScene({}).x()) << name;
            if (const char* folder = std::getenv("BRINDLE_PICTURES"))
                stage.picture().save(
                    QString::fromStdString(std::string(folder) + "/setup-mirrored-" + name + ".png"));
        });
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

}  // namespace
}  // namespace brindle
