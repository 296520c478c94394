#include "app/EventLoop.h"
#include "support/TempHistory.h"
#include "ui/CutTexts.h"
#include "ui/PseudoLocale.h"
#include "ui/Stage.h"

#include <QGuiApplication>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace brindle {
namespace {

constexpr Destination pages[] = {Destination::overview, Destination::activity, Destination::history,
                                 Destination::trends, Destination::locations};

/// For the eye, where the environment names a folder for pictures.
void keep(Stage& stage, const std::string& name) {
    if (const char* folder = std::getenv("BRINDLE_PICTURES"))
        stage.picture().save(QString::fromStdString(std::string(folder) + "/" + name + ".png"));
}

/// The texts that do not show whole in the window, but for those that it takes scrolling to see.
std::string cutIn(Stage& stage) {
    std::istringstream lines(cutTexts(*stage.window().contentItem()));
    std::string found;
    for (std::string line; std::getline(lines, line);)
        if (!line.ends_with("is beyond the edge")) found += line + "\n";
    return found;
}

TEST(MainWindow, CutsNoTextWhereItIsSmallAndTheTextIsLargeAndLong) {
    const PseudoLocale locale;
    ASSERT_TRUE(locale.isMade());
    StageSettings settings;
    settings.preferences.textSize = TextSize::extraLarge;
    Stage stage(settings);
    stage.window().resize(960, 680);
    for (const Destination page : pages) {
        stage.model().selection()->setDestination(page);
        stage.settle();
        keep(stage, "pseudo-" + std::string(rawText(page)));
        EXPECT_EQ(cutIn(stage), "") << rawText(page);
    }
}

TEST(MainWindow, IsMirroredAsAWhole) {
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    {
        Stage stage;
        stage.window().resize(1180, 820);
        for (const Destination page : pages) {
            stage.model().selection()->setDestination(page);
            stage.settle();
            keep(stage, "mirrored-" + std::string(rawText(page)));
            const QQuickItem* first = stage.named("Overview");
            const QQuickItem* last = stage.named("Drives & folders");
            ASSERT_TRUE(first != nullptr && last != nullptr);
            EXPECT_GT(first->mapToScene({}).x(), last->mapToScene({}).x());
        }
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST(MainWindow, RemembersItsSize) {
    StageSettings settings;
    settings.preferences.mainWindowFrame = "0 20 1000 700";
    Stage stage(settings);
    EXPECT_EQ(stage.window().height(), 700);
    stage.window().resize(1100, 710);
    stage.settle();
    stage.mainWindow().hide();
    EXPECT_TRUE(stage.model().settings()->mainWindowFrame().ends_with(" 20 1100 710"));
}

TEST(MainWindow, RecoversADamagedHistoryOnceTheUserHasConfirmed) {
    StageSettings settings{.isExample = false};
    settings.prepare = [](const std::string& data) {
        TempHistory history;
        history.include("Documents");
        history.check("Documents", {{"a", 1000}});
        history.close();
        std::filesystem::copy(history.directory(), data);
        std::fstream file(data + "/History.sqlite", std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(100);  // where the list of the tables is
        file << std::string(3000, 'x');
    };
    Stage stage(settings);
    const auto click = [&](const char* name) {
        stage.settle();
        QQuickItem* button = stage.named(name);
        ASSERT_NE(button, nullptr) << name;
        QTest::mouseClick(&stage.window(), Qt::LeftButton, {},
                          button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    };
    ASSERT_TRUE(runUntil([&] { return std::holds_alternative<ModeUnavailable>(stage.model().mode()); }));
    click("Recover…");
    keep(stage, "recover");
    EXPECT_EQ(cutIn(stage), "");
    click("Cancel");
    click("Recover…");
    EXPECT_TRUE(std::holds_alternative<ModeUnavailable>(stage.model().mode()));
    click("Recover");
    ASSERT_TRUE(runUntil([&] { return stage.model().mode() == AppMode(PlainMode::tracking); }));
    EXPECT_EQ(stage.model().records().front().trackedBytes, 1000);
}

}  // namespace
}  // namespace brindle
