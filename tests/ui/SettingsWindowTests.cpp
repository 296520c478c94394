#include "support/TempHistory.h"
#include "ui/CutTexts.h"
#include "ui/PseudoLocale.h"
#include "ui/Stage.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QTest>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr SettingsModel::Section sections[] = {SettingsModel::Appearance, SettingsModel::StorageChecks,
                                               SettingsModel::Startup, SettingsModel::Privacy,
                                               SettingsModel::Updates};

/// A history with locations in every state.
StageSettings ownHistory() {
    StageSettings settings{.isExample = false};
    settings.prepare = [](const std::string& data) {
        TempHistory history;
        history.include("Documents");
        history.include("Photos with a name that is much longer than names usually are");
        history.check("Documents", {{"a", 1}}, {.unreadable = {{"x", true}, {"y", true}}});
        history.close();
        std::filesystem::copy(history.directory(), data);
    };
    return settings;
}

/// The settings window beside a stage's main window.
class ShownSettings {
public:
    explicit ShownSettings(const StageSettings& settings) : stage_(settings) { show(); }

    [[nodiscard]] Stage& stage() { return stage_; }
    [[nodiscard]] QQuickWindow& window() { return *stage_.mainWindow().settings().window(); }
    [[nodiscard]] SettingsModel& model() { return *window().property("model").value<SettingsModel*>(); }

    void show() {
        stage_.mainWindow().showSettings();
        if (!QTest::qWaitForWindowActive(&window())) throw std::runtime_error("the settings don't come up");
    }
    void show(SettingsModel::Section section) {
        model().setSection(section);
        stage_.settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&window(), key, modifiers);
    }
    /// The item that has the keyboard, as a screen reader calls it.
    [[nodiscard]] std::string focused() {
        QQuickItem* item = window().activeFocusItem();
        auto* reader = item == nullptr ? nullptr : QAccessible::queryAccessibleInterface(item);
        return reader == nullptr ? std::string() : reader->text(QAccessible::Name).toStdString();
    }
    /// What the keyboard comes to with Tab, once around, from the section's own tab on.
    [[nodiscard]] std::vector<std::string> tabbed() {
        const std::string first = model().sectionTitles().at(model().section()).toStdString();
        for (int tabs = 0; tabs < 20 && focused() != first; ++tabs) press(Qt::Key_Tab);
        std::vector<std::string> names;
        for (press(Qt::Key_Tab); names.size() < 20 && focused() != first; press(Qt::Key_Tab))
            names.push_back(focused());
        return names;
    }
    /// For the eye, where the environment names a folder for pictures.
    void keep(const std::string& name) {
        if (const char* folder = std::getenv("BRINDLE_PICTURES"))
            window().grabWindow().save(QString::fromStdString(std::string(folder) + "/" + name + ".png"));
    }

private:
    Stage stage_;
};

TEST(SettingsWindow, TheKeyboardReachesEverySettingInReadingOrder) {
    ShownSettings shown(ownHistory());
    shown.show(SettingsModel::Appearance);
    EXPECT_THAT(shown.tabbed(), ElementsAre("Dark", "Standard"));
    shown.show(SettingsModel::StorageChecks);
    EXPECT_THAT(shown.tabbed(),
                ElementsAre("Check automatically", "Check every: 5 minutes", "Show in Files: Documents",
                            "Show in Files: Photos with a name that is much longer than names usually are",
                            "Estimate history from before Brindle", "Notify about unusual growth"));
    shown.show(SettingsModel::Startup);
    EXPECT_THAT(shown.tabbed(),
                ElementsAre("Open at login", "Open without the window at login", "Show in system tray"));
    shown.show(SettingsModel::Privacy);
    EXPECT_THAT(shown.tabbed(), ElementsAre("Show in Files: History folder", "Show in Files: Statements"));
    shown.show(SettingsModel::Updates);
    EXPECT_THAT(shown.tabbed(), ElementsAre());
}

TEST(SettingsWindow, ArrowsShowTheSectionsAndAReaderHearsWhichIsShown) {
    ShownSettings shown(ownHistory());
    ASSERT_THAT(shown.tabbed(), testing::Not(testing::IsEmpty()));
    shown.press(Qt::Key_Up);
    EXPECT_EQ(shown.focused(), "Appearance") << "there is nothing before the first";
    for (const char* title : {"Storage checks", "Startup", "Privacy & data", "Updates", "Updates"}) {
        shown.press(Qt::Key_Down);
        EXPECT_EQ(shown.focused(), title);
        auto* tab = QAccessible::queryAccessibleInterface(shown.window().activeFocusItem());
        EXPECT_EQ(tab->role(), QAccessible::PageTab);
        EXPECT_TRUE(tab->state().selected);
    }
}

TEST(SettingsWindow, SettingsHoldAtOnce) {
    ShownSettings shown(ownHistory());
    Settings& settings = *shown.stage().model().settings();
    static_cast<void>(shown.tabbed());
    shown.press(Qt::Key_Tab);
    shown.press(Qt::Key_Right);
    EXPECT_EQ(settings.appearance(), AppearanceMode::light);
    EXPECT_EQ(shown.window().color(), shown.stage().mainWindow().appearance().color(ColorToken::ground));

    shown.show(SettingsModel::StorageChecks);
    static_cast<void>(shown.tabbed());
    shown.press(Qt::Key_Tab);
    shown.press(Qt::Key_Space);
    EXPECT_FALSE(settings.checksPaused());
    shown.press(Qt::Key_Tab);
    shown.press(Qt::Key_Down);
    EXPECT_EQ(settings.checkInterval(), 15);
    EXPECT_EQ(shown.focused(), "Check every: 15 minutes");
}

TEST(SettingsWindow, EscapeAndCtrlWCloseItAndItComesBackAsItWas) {
    ShownSettings shown(ownHistory());
    shown.window().setGeometry(60, 50, 820, 610);
    shown.show(SettingsModel::StorageChecks);
    static_cast<void>(shown.tabbed());
    for (int tabs = 0; tabs < 2; ++tabs) shown.press(Qt::Key_Tab);
    shown.press(Qt::Key_Return);
    shown.press(Qt::Key_Escape);
    EXPECT_TRUE(shown.window().isVisible()) << "only the list is closed";
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_Escape, Qt::NoModifier), std::pair(Qt::Key_W, Qt::ControlModifier)}) {
        shown.press(key, modifiers);
        EXPECT_FALSE(shown.window().isVisible());
        shown.show();
        EXPECT_EQ(shown.window().geometry(), QRect(60, 50, 820, 610));
        EXPECT_EQ(shown.model().section(), SettingsModel::StorageChecks);
    }
    shown.stage().mainWindow().hide();
    EXPECT_FALSE(shown.window().isVisible());
}

TEST(SettingsWindow, OpensWhateverBecameOfTheHistory) {
    StageSettings unavailable = ownHistory();
    unavailable.prepare = [fill = unavailable.prepare](const std::string& data) {
        fill(data);
        rowsOf(data + "/History.sqlite", "PRAGMA user_version = 99");
    };
    StageSettings firstRun{.isExample = false};
    firstRun.preferences.startupSetupCompleted = false;
    for (const StageSettings& settings : {unavailable, firstRun, StageSettings(), ownHistory()}) {
        Stage stage(settings);
        QTest::keyClick(&stage.window(), Qt::Key_Comma, Qt::ControlModifier);
        ASSERT_TRUE(stage.mainWindow().settings().isVisible());
        for (const auto section : sections) {
            stage.mainWindow().settings().window()->property("model").value<SettingsModel*>()->setSection(
                section);
            QCoreApplication::processEvents();
        }
    }
}

TEST(SettingsWindow, CutsNoTextWhereItIsSmallAndTheTextIsLargeAndLong) {
    const PseudoLocale locale;
    ASSERT_TRUE(locale.isMade());
    StageSettings settings = ownHistory();
    settings.preferences.textSize = TextSize::extraLarge;
    ShownSettings shown(settings);
    shown.window().resize(shown.window().minimumSize());
    shown.stage().mainWindow().startup().setTrayAvailable(false);
    for (const auto section : sections) {
        shown.show(section);
        shown.keep("settings-pseudo-" + std::to_string(section));
        EXPECT_EQ(cutTexts(*shown.window().contentItem(), BeyondTheEdge::scrollsIntoView), "");
    }
}

TEST(SettingsWindow, IsMirroredAsAWhole) {
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    {
        ShownSettings shown(ownHistory());
        for (const auto section : sections) {
            shown.show(section);
            shown.keep("settings-mirrored-" + std::to_string(section));
        }
        static_cast<void>(shown.tabbed());
        QQuickItem& tab = *shown.window().activeFocusItem();
        EXPECT_EQ(shown.focused(), "Updates");
        EXPECT_GT(tab.mapToScene({}).x(), shown.window().width() / 2.0);
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

}  // namespace
}  // namespace brindle
