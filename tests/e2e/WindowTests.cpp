#include "app/EventLoop.h"
#include "e2e/Screen.h"

#include <csignal>
#include <fcntl.h>
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

/// The session that the program belongs to, as session_manager runs it.
class LoginSession {
public:
    explicit LoginSession(const fs::path& log) : log_(log) {
        ProgramLaunch launch{.arguments = {BRINDLE_SESSION_MANAGER}, .environment = {}};
        const FileDescriptor output(open(log.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        launch.output = output.get();
        manager_ = std::make_unique<RunningProgram>(launch);
        if (!eventually([&] { return !events().empty(); })) throw std::runtime_error("there is no session");
    }

    [[nodiscard]] std::string address() const { return events().front(); }
    void logOut() const { manager_->signal(SIGUSR1); }
    void stay() const { manager_->signal(SIGUSR2); }
    void end() const { manager_->signal(SIGHUP); }
    /// What the program has done so far.
    [[nodiscard]] bool heard(std::vector<std::string> wanted) const {
        return eventually([&] {
            const auto all = events();
            return std::vector(all.begin() + 1, all.end()) == wanted;
        });
    }

private:
    [[nodiscard]] std::vector<std::string> events() const {
        std::vector<std::string> lines;
        std::ifstream stream(log_);
        for (std::string line; std::getline(stream, line) && !stream.eof();) lines.push_back(line);
        return lines;
    }

    fs::path log_;
    std::unique_ptr<RunningProgram> manager_;
};

TEST_F(Person, WhoLogsOutIsAskedNothingAndWhoStaysKeepsTheProgram) {
    const LoginSession session(desktop.brindle.home() / "session");
    ProgramLaunch launch = screen.launch();
    launch.setVariable("SESSION_MANAGER", session.address());
    launch.arguments.insert(launch.arguments.end(), {"-BrindleExample", "YES"});
    desktop.program = std::make_unique<RunningProgram>(launch);
    ASSERT_TRUE(screen.shows("Example history — your files haven't been scanned."));
    ASSERT_TRUE(session.heard({"registered", "saved"}));

    session.logOut();
    ASSERT_TRUE(session.heard({"registered", "saved", "saved"}));
    session.stay();
    screen.press("ctrl+2");
    EXPECT_TRUE(screen.shows("Search names")) << "a logout that was called off ends nothing";

    session.logOut();
    ASSERT_TRUE(session.heard({"registered", "saved", "saved", "saved"}));
    session.end();
    EXPECT_TRUE(session.heard({"registered", "saved", "saved", "saved", "left"}));
    const auto end = std::exchange(desktop.program, nullptr)->wait();
    EXPECT_EQ(end.exitCode, 0) << end.error;
}

}  // namespace
}  // namespace brindle
