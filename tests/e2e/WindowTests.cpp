#include "app/EventLoop.h"
#include "e2e/Screen.h"

#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A person with the real program on a screen of their own.
class Person : public testing::Test {
protected:
    Desktop desktop;
    Screen screen{desktop};

    void startInExample() {
        ProgramLaunch launch = screen.launch();
        launch.arguments.insert(launch.arguments.end(), {"-BrindleExample", "YES"});
        desktop.program = std::make_unique<RunningProgram>(launch);
    }
};

TEST_F(Person, WalksFromTheExampleToAFileAndExportsWhatTheySee) {
    startInExample();
    ASSERT_TRUE(screen.shows("Example history — your files haven't been scanned."));
    EXPECT_TRUE(screen.shows("Today"));

    // Into the day, by the keyboard.
    screen.press("ctrl+2");
    ASSERT_TRUE(screen.shows("Search names"));
    screen.press("alt+Left");
    EXPECT_TRUE(screen.shows("Today"));

    // A folder by mouse, and back by the keyboard.
    screen.click("Home…");
    EXPECT_TRUE(screen.shows("Pictures…"));
    screen.press("alt+Up");
    EXPECT_TRUE(screen.hides("Pictures…"));

    screen.press("ctrl+f");
    screen.type("no such name at all");
    EXPECT_TRUE(screen.shows("No changes match…"));
    screen.press("Escape");
    EXPECT_TRUE(screen.hides("No changes match…"));

    screen.press("ctrl+e");
    ASSERT_TRUE(screen.shows("Includes…"));
    screen.press("Escape");
    EXPECT_TRUE(screen.hides("Includes…"));

    // A statement, saved where the system's dialog is told to.
    screen.press("ctrl+e");
    ASSERT_TRUE(screen.shows("Includes…"));
    screen.press("Return");
    ASSERT_TRUE(screen.shows("File name:"));
    const fs::path statement = desktop.brindle.home() / "statement.csv";
    screen.press("ctrl+a");
    screen.type(statement.native());
    screen.press("Return");
    EXPECT_TRUE(screen.shows("Your storage statement is ready."));
    std::ifstream written(statement);
    std::string row;
    std::getline(written, row);
    EXPECT_THAT(row, HasSubstr("Change in bytes"));
    std::getline(written, row);
    EXPECT_THAT(row, HasSubstr(",Example,"));
    screen.click("Show in Files");
    EXPECT_TRUE(screen.shows("“" + statement.native() + "” can't be shown: no file manager answers."));
    screen.press("Escape");
    EXPECT_TRUE(screen.hides("Your storage statement is ready."));

    screen.press("ctrl+w");
    EXPECT_TRUE(screen.hides("Example history — your files haven't been scanned."));
    EXPECT_TRUE(desktop.program->isRunning()) << "closing the window leaves the program running";
    const RunningProgram second(screen.launch());
    EXPECT_TRUE(screen.shows("Example history — your files haven't been scanned."))
        << "a second start shows it";
    screen.press("ctrl+q");
    const auto end = std::exchange(desktop.program, nullptr)->wait();
    EXPECT_EQ(end.exitCode, 0) << end.error;
}

TEST_F(Person, SeesTheirOwnHistoryAndWhatAScreenReaderDoes) {
    const fs::path files = desktop.brindle.home() / "files";
    writeFile(files / "Letters/a", 4'000'000);
    desktop.track({files});
    writeFile(files / "Letters/b", 1'500'000);
    (void)desktop.terminal({"check"});
    screen.start();
    ASSERT_TRUE(screen.shows("1 location included"));
    EXPECT_TRUE(screen.shows("Net change: +1.5 MB"));

    for (const char* page : {"Activity", "Storage history", "Trends", "Drives & folders", "Overview"}) {
        EXPECT_TRUE(screen.activate(page)) << page;
        EXPECT_TRUE(eventually([&] {
            const auto tab = screen.named(page);
            return tab && tab->role == "page tab" && tab->is("selected");
        })) << page;
        // Nothing that can be used is without a name.
        for (const Screen::Element& element : screen.elements())
            if (element.is("focusable") && element.is("enabled")) {
                EXPECT_NE(element.name, "") << page << ": " << element.role;
            }
    }
}

}  // namespace
}  // namespace brindle
