#include "app/pages/FixedHistory.h"
#include "app/pages/MiniWindowModel.h"
#include "app/pages/ShownHistory.h"
#include "app/pages/TrayModel.h"
#include "scan/LocationAccess.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace brindle {
namespace {

using testing::Contains;

/// A tracked folder called "Papers & more", in a history of its own, as the two small surfaces show it.
class SmallSurfaces : public testing::Test {
protected:
    SmallSurfaces() {
        write("a", 1000);
        LocationRecord record = makeCandidate(files(), {}, systemNow()).record;
        record.name = "Papers & more";
        HistoryStore(data()).insert(std::move(record)).get();
    }

    [[nodiscard]] std::string data() const { return (folder_.path() / "data").string(); }
    [[nodiscard]] std::string files() const { return (folder_.path() / "files").string(); }
    void write(const std::string& name, std::size_t bytes) const {
        std::filesystem::create_directories(files());
        std::ofstream(files() + "/" + name) << std::string(bytes, 'x');
    }
    void remove(const std::string& name) const { std::filesystem::remove(files() + "/" + name); }

    /// Checks the folder; ends when its figures are there.
    void check() {
        bool isOver = false;
        const auto end =
            QObject::connect(&app.session(), &HistorySession::runFinished, [&] { isOver = true; });
        bool areFiguresThere = false;
        const auto figures = QObject::connect(&app, &AppModel::ownTodayChanged,
                                              [&] { areFiguresThere = isOver && !app.isChecking(); });
        app.checkNow();
        EXPECT_TRUE(runUntil([&] { return areFiguresThere; }));
        QObject::disconnect(end);
        QObject::disconnect(figures);
    }

    TempFolder folder_;
    ShownHistory shown{systemNow()};
    AppModel& app = openedApp();
    TrayModel tray{app};
    MiniWindowModel mini{app};

private:
    AppModel& openedApp() {
        EXPECT_TRUE(shown.open(data()));
        return shown.model();
    }
};

TEST_F(SmallSurfaces, TellTodayAsItGoesOn) {
    EXPECT_EQ(tray.spokenLabel(), "Brindle");
    EXPECT_EQ(tray.todayLine(), "No check recorded for this date.");
    EXPECT_EQ(tray.addedLine(), "");
    EXPECT_EQ(mini.message(), "Set up Brindle to see your storage.");
    EXPECT_FALSE(mini.hasFigures());
    EXPECT_FALSE(tray.canCheckNow());

    check();
    app.route();
    EXPECT_EQ(tray.spokenLabel(), "Brindle, today 0 bytes");
    EXPECT_EQ(tray.todayLine(), "Today: 0 bytes");
    EXPECT_EQ(mini.message(), "");
    EXPECT_TRUE(tray.canCheckNow());

    write("b", 1500);
    check();
    EXPECT_EQ(tray.todayLine(), "Today: +1.5 kB");
    remove("a");
    remove("b");
    check();
    EXPECT_EQ(tray.todayLine(), "Today: \u22121.0 kB");
    EXPECT_EQ(tray.spokenLabel(), "Brindle, today \u22121.0 kB");
    EXPECT_EQ(tray.addedLine(), "Added 1.5 kB");
    EXPECT_TRUE(mini.hasFigures());
    EXPECT_EQ(mini.added(), "+1.5 kB");
    EXPECT_EQ(mini.freed(), "\u22122.5 kB");
    EXPECT_EQ(mini.freedExact(), "\u22122,500 bytes");

    shown.setNow(systemNow() + 86'400);
    app.dayOrZoneChanged();
    EXPECT_TRUE(runUntil([&] { return tray.todayLine() == "No check recorded for this date."; }));
    EXPECT_EQ(mini.message(), "No check recorded for this date.");
}

TEST_F(SmallSurfaces, TellWhatBrindleIsDoing) {
    EXPECT_EQ(mini.status(), "Checks paused.") << "also when nothing was ever checked";
    EXPECT_EQ(tray.statusLine(), "Checks paused.");
    EXPECT_EQ(tray.pauseTitle(), "Resume Automatic Checks");
    tray.togglePause();
    EXPECT_EQ(mini.status(), "Not checked yet");
    EXPECT_EQ(tray.statusLine(), "");
    EXPECT_EQ(tray.pauseTitle(), "Pause Automatic Checks");
    tray.togglePause();

    app.settings()->setShowsEstimates(true);
    std::set<std::string> trayLines;
    std::set<std::string> miniLines;
    QObject::connect(&tray, &TrayModel::changed, [&] { trayLines.insert(tray.statusLine().toStdString()); });
    QObject::connect(&mini, &MiniWindowModel::changed, [&] {
        miniLines.insert(mini.status().toStdString());
        EXPECT_FALSE(app.isChecking() && tray.canCheckNow());
    });
    check();
    EXPECT_THAT(trayLines, Contains("Checking Papers & more"));
    EXPECT_THAT(trayLines, Contains("Estimating earlier history…"));
    EXPECT_THAT(miniLines, Contains("Checking Papers & more…"));
    EXPECT_THAT(miniLines, Contains("Estimating earlier history…"));

    app.route();
    tray.togglePause();
    EXPECT_TRUE(runUntil([&] { return tray.statusLine().isEmpty(); }));
    const auto latest = app.records().front().lastCheckAt;
    ASSERT_TRUE(latest);
    EXPECT_EQ(mini.status(), "Last checked " + QString::fromStdString(app.calendar().timeLabel(*latest)));
}

TEST_F(SmallSurfaces, OnlyTheMiniWindowShowsTheExample) {
    check();
    app.route();
    const auto example = std::make_shared<FixedHistory>();
    example->known.today = app.history().today;
    example->include("home", "Home", example->known.today).lastCheck = 1'772'884'800;
    example->record("home", example->known.today, {"Films"}, 4'000'000);
    ASSERT_TRUE(shown.show(example));
    EXPECT_TRUE(mini.isExample());
    EXPECT_EQ(mini.added(), "+4.0 MB");
    app.settings()->setChecksPaused(false);
    EXPECT_EQ(mini.status(), "Last checked Mar 7, 2026, 12:00\u202fPM");
    EXPECT_EQ(tray.todayLine(), "Today: 0 bytes");
}

TEST_F(SmallSurfaces, OpenWindowsAndKeepTheMiniWindowOnTop) {
    int requests = 0;
    QObject::connect(&app, &AppModel::mainWindowRequested, [&] { ++requests; });
    tray.openMainWindow();
    mini.openMainWindow();
    EXPECT_EQ(requests, 2);

    EXPECT_EQ(tray.miniWindowTitle(), "Open Mini Window");
    tray.toggleMiniWindow();
    EXPECT_TRUE(app.isMiniWindowOpen());
    EXPECT_EQ(tray.miniWindowTitle(), "Close Mini Window");
    mini.close();
    EXPECT_FALSE(app.isMiniWindowOpen());

    EXPECT_EQ(mini.keepsOnTopHelp(), "Keep on top of other windows");
    mini.toggleKeepsOnTop();
    EXPECT_TRUE(app.settings()->miniWindowKeepsOnTop());
    EXPECT_EQ(mini.keepsOnTopHelp(), "Stop keeping on top");

    tray.toggleMiniWindow();
    app.shutDown();
    EXPECT_FALSE(app.isMiniWindowOpen());
    tray.toggleMiniWindow();
    EXPECT_FALSE(app.isMiniWindowOpen()) << "the program ends";
}

}  // namespace
}  // namespace brindle
