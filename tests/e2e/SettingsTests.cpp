#include "app/EventLoop.h"
#include "e2e/Screen.h"
#include "platform/WholeFile.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

TEST(SettingsOnAScreen, AreReachedReadAndChanged) {
    Desktop desktop;
    const Screen screen(desktop);
    const fs::path files = desktop.brindle.home() / "files";
    writeFile(files / "a", 1000);
    desktop.track({files});
    desktop.program = std::make_unique<RunningProgram>(screen.launch());
    ASSERT_TRUE(screen.shows("1 location included"));

    screen.press("ctrl+comma");
    ASSERT_TRUE(screen.shows("Extra large"));
    const auto preferences = [&] {
        return readWholeFile(desktop.brindle.settingsFile(), 1U << 20U).value_or("");
    };
    EXPECT_TRUE(screen.activate("Light"));
    EXPECT_TRUE(eventually([&] { return preferences().find("\"light\"") != std::string::npos; }));

    EXPECT_TRUE(screen.activate("Storage checks"));
    ASSERT_TRUE(screen.shows("Check automatically"));
    EXPECT_TRUE(screen.shows("Show in Files: files"));
    const auto checks = [&] { return screen.named("Check automatically"); };
    EXPECT_EQ(checks()->role, "check box");
    EXPECT_TRUE(checks()->is("checked"));
    EXPECT_TRUE(screen.activate("Check automatically"));
    EXPECT_TRUE(eventually([&] { return checks() && !checks()->is("checked"); }));
    EXPECT_TRUE(screen.shows("Checks paused.")) << "in the main window";

    EXPECT_TRUE(screen.activate("Startup"));
    ASSERT_TRUE(screen.shows("Open at login"));
    const fs::path entry = desktop.brindle.home() / "config/autostart/org.brindle.brindle.desktop";
    screen.click("Open at login");
    EXPECT_TRUE(eventually([&] { return fs::exists(entry); }));
    screen.press("space");
    EXPECT_TRUE(eventually([&] { return !fs::exists(entry); }));
    EXPECT_TRUE(screen.shows("Show in system tray"));

    screen.press("Escape");
    EXPECT_TRUE(screen.hides("Open at login"));
    EXPECT_TRUE(screen.shows("1 location included")) << "the main window stays";
    screen.press("ctrl+comma");
    EXPECT_TRUE(screen.shows("Open at login")) << "where it was left";
    screen.press("ctrl+q");
    const auto end = std::exchange(desktop.program, nullptr)->wait();
    EXPECT_EQ(end.exitCode, 0) << end.error;
}

}  // namespace
}  // namespace brindle
