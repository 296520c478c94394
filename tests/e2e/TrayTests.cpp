#include "e2e/Tray.h"

#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sstream>
#include <thread>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(TrayItem, OffersItsMenuAndDoesWhatIsChosen) {
    Desktop desktop;
    Screen screen(desktop);
    std::ofstream(desktop.brindle.settingsFile())
        << R"({"startupSetupCompleted": true, "opensQuietlyAtLogin": true})";
    const fs::path files = desktop.brindle.home() / "R&D_notes & more";
    writeFile(files / "a", 4'000'000);
    desktop.track({files});
    writeFile(files / "b", 1'500'000);
    ProgramLaunch launch = screen.launch();
    launch.arguments.emplace_back("--launched-at-login");
    desktop.program = std::make_unique<RunningProgram>(launch);

    // The desktop's tray takes longer than Brindle.
    std::this_thread::sleep_for(std::chrono::seconds(2));
    auto tray = std::make_unique<Tray>(screen);
    ASSERT_TRUE(tray->shows("Brindle, today +1.5 MB")) << tray->item();
    EXPECT_FALSE(screen.named("Overview").has_value()) << "the login was to be quiet";
    EXPECT_THAT(tray->item()["iconSizes"], ElementsAre(16, 22, 24, 32, 48, 64));
    EXPECT_THAT(tray->item()["separators"], ElementsAre(2, 7, 9));
    EXPECT_THAT(tray->menu(), ElementsAre("[Today: +1.5 MB]", "[Added 1.5 MB]", "Open Brindle", "Check Now",
                                          "Pause Automatic Checks", "Open Mini Window",
                                          "[Check for Updates…]", "Quit Brindle"));

    ASSERT_TRUE(tray->choose("Pause Automatic Checks"));
    EXPECT_TRUE(tray->offers("[Checks paused.]"));
    writeFile(files / "c", 2'000'000);
    fs::remove(files / "a");
    ASSERT_TRUE(tray->choose("Check Now"));
    EXPECT_TRUE(tray->shows("Brindle, today \u2212500.0 kB"));
    EXPECT_TRUE(tray->offers("[Today: \u2212500.0 kB]"));
    EXPECT_TRUE(tray->choose("Resume Automatic Checks"));

    EXPECT_TRUE(tray->choose("Open Mini Window"));
    EXPECT_TRUE(screen.shows("Keep on top"));
    EXPECT_FALSE(tray->choose("Open Mini Window"));
    EXPECT_TRUE(tray->choose("Close Mini Window"));
    EXPECT_TRUE(screen.hides("Keep on top"));

    tray->click();
    EXPECT_TRUE(screen.shows("Overview"));
    screen.press("ctrl+w");
    EXPECT_TRUE(screen.hides("Overview"));

    // A panel that begins anew.
    tray.reset();
    tray = std::make_unique<Tray>(screen);
    EXPECT_TRUE(tray->offers("Open Brindle"));
    EXPECT_TRUE(tray->choose("Open Brindle"));
    EXPECT_TRUE(screen.shows("Overview"));
    EXPECT_TRUE(tray->choose("Quit Brindle"));
    const auto end = std::exchange(desktop.program, nullptr)->wait();
    EXPECT_EQ(end.exitCode, 0) << end.error;
}

TEST(TrayItem, SaysWhatIsCheckedByItsName) {
    Desktop desktop;
    Screen screen(desktop);
    const fs::path files = desktop.brindle.home() / "R&D_notes & more";
    writeFile(files / "a", 100);
    desktop.track({files});
    const Tray tray(screen);
    screen.start();
    ASSERT_TRUE(tray.offers("Check Now"));
    // A check waits with its result while somebody else writes.
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(desktop.brindle.historyFile().c_str(), &db), SQLITE_OK);
    EXPECT_TRUE(eventually(
        [&] { return sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK; }));
    writeFile(files / "b", 100);
    EXPECT_TRUE(tray.choose("Check Now"));
    EXPECT_TRUE(tray.offers("[Checking R&D_notes & more]"));
    EXPECT_TRUE(tray.offers("[Check Now]"));
    sqlite3_close(db);
    EXPECT_TRUE(tray.offers("Check Now"));
    EXPECT_EQ(desktop.quit().exitCode, 0);
}

/// The mini window on a screen with a window manager.
class MiniWindowOnScreen : public testing::Test {
protected:
    void start() {
        ProgramLaunch launch = screen.launch();
        launch.arguments.insert(launch.arguments.end(), {"-BrindleExample", "YES"});
        desktop.program = std::make_unique<RunningProgram>(launch);
        ASSERT_TRUE(screen.shows("Overview"));
        // The window manager's last word about a new window is that it has the keyboard.
        ASSERT_TRUE(eventually([&] {
            const auto name = screen.run({"xdotool", "getactivewindow", "getwindowname"}).output;
            return name.find("Brindle") != std::string::npos;
        }));
    }
    void quit() { EXPECT_EQ(desktop.quit().exitCode, 0); }

    /// By the number of its X window; empty while it is not there.
    [[nodiscard]] std::string miniWindow() const {
        std::istringstream windows(
            screen.run({"xdotool", "search", "--onlyvisible", "--name", "^Brindle$"}).output);
        for (std::string window; windows >> window;)
            if (geometry(window).find("WIDTH=300") != std::string::npos) return window;
        return {};
    }
    [[nodiscard]] std::string geometry(const std::string& window) const {
        return screen.run({"xdotool", "getwindowgeometry", "--shell", window}).output;
    }
    [[nodiscard]] std::string properties() const {
        return screen.run({"xprop", "-id", miniWindow(), "_NET_WM_STATE", "_NET_WM_DESKTOP"}).output;
    }
    /// Whether no other window is in front of it.
    [[nodiscard]] bool isInFront() const {
        const std::string windows = screen.run({"xprop", "-root", "_NET_CLIENT_LIST_STACKING"}).output;
        return windows.ends_with(fmt::format("{:#x}\n", std::stoul(miniWindow())));
    }
    /// As the window manager moves it. (Where a test drags it instead, the key that follows may still be the
    /// window manager's, which ends a drag by it.)
    void moveTo(int x, int y) const {
        const std::string before = geometry(miniWindow());
        screen.run({"xdotool", "windowmove", miniWindow(), std::to_string(x), std::to_string(y)});
        EXPECT_TRUE(eventually([&] { return geometry(miniWindow()) != before; }));
    }
    [[nodiscard]] bool hasFocus() const {
        return screen.run({"xdotool", "getactivewindow"}).output == miniWindow() + "\n";
    }

    Desktop desktop;
    Screen screen{desktop};
};

TEST_F(MiniWindowOnScreen, TakesNoFocusStaysOnTopWhenAskedAndKeepsItsPlace) {
    start();
    screen.press("ctrl+alt+m");
    ASSERT_TRUE(screen.shows("Keep on top"));
    ASSERT_TRUE(eventually([&] { return !miniWindow().empty(); }));
    EXPECT_THAT(geometry(miniWindow()), HasSubstr("X=570\nY=362\nWIDTH=300\nHEIGHT=176\n"));
    EXPECT_FALSE(hasFocus());
    EXPECT_TRUE(eventually([&] { return isInFront(); }));
    EXPECT_THAT(properties(), HasSubstr("_NET_WM_DESKTOP(CARDINAL) = 4294967295"));
    EXPECT_THAT(properties(), Not(HasSubstr("_NET_WM_STATE_ABOVE")));

    screen.click("Keep on top");
    EXPECT_TRUE(eventually([&] { return properties().find("_NET_WM_STATE_ABOVE") != std::string::npos; }));
    EXPECT_TRUE(eventually([&] { return hasFocus(); })) << "who clicks on it turns to it";
    moveTo(200, 150);
    const std::string place = geometry(miniWindow());

    screen.press("Escape");
    EXPECT_TRUE(screen.hides("Keep on top"));
    quit();
    start();
    EXPECT_TRUE(desktop.act("mini-window"));
    ASSERT_TRUE(eventually([&] { return !miniWindow().empty(); }));
    const auto geometryPart = [](const std::string& text) { return text.substr(text.find("X=")); };
    EXPECT_EQ(geometryPart(geometry(miniWindow())), geometryPart(place));
    EXPECT_TRUE(eventually([&] { return properties().find("_NET_WM_STATE_ABOVE") != std::string::npos; }));
    EXPECT_FALSE(hasFocus());

    // From the one window to the other, by the keyboard.
    screen.press("alt+Tab");
    EXPECT_TRUE(eventually([&] { return hasFocus(); }));
    screen.press("ctrl+0");
    EXPECT_TRUE(eventually([&] { return !hasFocus(); }));
    screen.press("ctrl+w");
    EXPECT_TRUE(screen.hides("Overview"));
    screen.click("Open Brindle");
    EXPECT_TRUE(screen.shows("Overview"));
    quit();
}

}  // namespace
}  // namespace brindle
