#include "app/EventLoop.h"
#include "support/TempHistory.h"
#include "ui/CutTexts.h"
#include "ui/PseudoLocale.h"
#include "ui/Stage.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr Destination pages[] = {Destination::overview, Destination::activity, Destination::history,
                                 Destination::trends, Destination::locations};

/// For the eye, where the environment names a folder for pictures.
void keep(Stage& stage, const std::string& name) {
    if (const char* folder = std::getenv("BRINDLE_PICTURES"))
        stage.picture().save(QString::fromStdString(std::string(folder) + "/" + name + ".png"));
}

/// The types of the pages that the item shows.
std::vector<std::string> visiblePages(const QQuickItem* item) {
    std::vector<std::string> found;
    if (!item->isVisible()) return found;
    const std::string type = QString(item->metaObject()->className()).section('_', 0, 0).toStdString();
    if (type.ends_with("Page")) found.push_back(type);
    for (const QQuickItem* child : item->childItems())
        for (std::string& page : visiblePages(child)) found.push_back(std::move(page));
    return found;
}

/// Every page in turn, in the smallest window and the largest text.
void expectNoTextCut(const std::string& language, const std::function<void(Stage&)>& expectMore = {}) {
    StageSettings settings;
    settings.preferences.textSize = TextSize::extraLarge;
    Stage stage(settings);
    stage.window().resize(960, 680);
    for (const Destination page : pages) {
        SCOPED_TRACE(rawText(page));
        stage.model().selection()->setDestination(page);
        stage.settle();
        keep(stage, language + "-" + std::string(rawText(page)));
        EXPECT_EQ(cutTexts(*stage.window().contentItem(), BeyondTheEdge::scrollsIntoView), "");
        if (expectMore) expectMore(stage);
    }
}

TEST(MainWindow, CutsNoTextWhereItIsSmallAndTheTextIsLargeAndLong) {
    const PseudoLocale locale;
    ASSERT_TRUE(locale.isMade());
    expectNoTextCut("pseudo");
}

/// The figures in European digits of the texts that are shown, but for those of names.
QStringList europeanFigures(const QQuickItem& item) {
    static const QRegularExpression names("\u2068[^\u2069]*\u2069?");
    static const QRegularExpression figures("[0-9]+");
    QStringList found;
    if (!item.isVisible()) return found;
    if (item.inherits("QQuickText")) {
        const QString text = item.property("text").toString().remove(names);
        if (text.contains(figures)) found << text;
    }
    for (const QQuickItem* child : item.childItems()) found += europeanFigures(*child);
    return found;
}

class MainWindowIn : public testing::TestWithParam<const char*> {};

TEST_P(MainWindowIn, CutsNoTextWhereTheWindowIsSmallAndTheTextIsLarge) {
    const TestLanguage language(GetParam());
    ASSERT_EQ(textLanguage(), GetParam());
    expectNoTextCut(GetParam(), [](Stage& stage) {
        if (!QGuiApplication::isRightToLeft()) return;
        EXPECT_EQ(europeanFigures(*stage.window().contentItem()).join(" | ").toStdString(), "");
    });
}

TEST(MainWindow, CutsNoTextAtAnyWidth) {
    StageSettings settings;
    settings.preferences.textSize = TextSize::extraLarge;
    Stage stage(settings);
    for (const Destination page : pages) {
        stage.model().selection()->setDestination(page);
        stage.settle();
        for (int width = 960; width < 1500; width += 13) {
            stage.window().resize(width, 680);
            QTest::qWait(width % 4 * 10);
            ASSERT_EQ(cutTexts(*stage.window().contentItem(), BeyondTheEdge::scrollsIntoView), "")
                << rawText(page) << ", " << width << " wide";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, MainWindowIn, testing::Values("de", "ar"),
                         [](const auto& language) { return std::string(language.param); });

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

TEST(MainWindow, ShowsAPageUntilTheNextIsMade) {
    Stage stage;
    const auto shown = [&] { return visiblePages(stage.window().contentItem()); };
    using Names = std::vector<std::string>;
    ASSERT_EQ(shown(), Names{"OverviewPage"});

    Selection& selection = *stage.model().selection();
    selection.setDestination(Destination::activity);
    EXPECT_EQ(shown(), Names{"OverviewPage"}) << "nothing is waited for";
    selection.setDestination(Destination::trends);
    ASSERT_TRUE(runUntil([&] {
        EXPECT_EQ(shown().size(), 1U);
        return shown() == Names{"TrendsPage"};
    }));

    selection.setDestination(Destination::activity);
    selection.setDestination(Destination::trends);
    stage.settle();
    EXPECT_EQ(shown(), Names{"TrendsPage"}) << "the user thought better of it";
}

TEST(MainWindow, TheScaleOfTrendsHasRoomForItsAmountsInEveryRange) {
    Stage stage;
    Selection& selection = *stage.model().selection();
    for (const auto range : {TrendRange::week, TrendRange::month, TrendRange::quarter}) {
        for (const auto destination : {Destination::activity, Destination::trends}) {
            selection.setRange(range);
            selection.setDestination(destination);
            stage.settle();
        }
        const QQuickItem* chart = stage.item("barChart");
        ASSERT_NE(chart, nullptr);
        EXPECT_GT(chart->property("labelRoom").toReal(), 20);
    }
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
    EXPECT_EQ(cutTexts(*stage.window().contentItem(), BeyondTheEdge::scrollsIntoView), "");
    click("Cancel");
    click("Recover…");
    EXPECT_TRUE(std::holds_alternative<ModeUnavailable>(stage.model().mode()));
    click("Recover");
    ASSERT_TRUE(runUntil([&] { return stage.model().mode() == AppMode(PlainMode::tracking); }));
    EXPECT_EQ(stage.model().records().front().trackedBytes, 1000);
}

}  // namespace
}  // namespace brindle
