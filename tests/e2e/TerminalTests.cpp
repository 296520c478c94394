#include "e2e/Brindle.h"
#include "model/DisplayWidth.h"
#include "support/TestMounts.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr const char* progressText = "Checking your files";
const std::string styleStart = "\x1b[";

/// A pseudo terminal: what is written on it is read here.
class Terminal {
public:
    Terminal() {
        int ends[2] = {-1, -1};
        if (::openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) != 0)
            throw std::runtime_error("there are no pseudo terminals");
        reader_ = FileDescriptor(ends[0]);
        writer_ = FileDescriptor(ends[1]);
        ::fcntl(reader_.get(), F_SETFD, FD_CLOEXEC);
        ::fcntl(writer_.get(), F_SETFD, FD_CLOEXEC);
    }

    [[nodiscard]] int writer() const { return writer_.get(); }

    /// Reads until every program that writes there has ended.
    std::string readAll() {
        constexpr int longestSilence = 60'000;  // milliseconds
        writer_ = {};
        std::string text;
        std::array<char, 4096> part{};
        pollfd ready{.fd = reader_.get(), .events = POLLIN, .revents = 0};
        while (::poll(&ready, 1, longestSilence) > 0) {
            const auto size = ::read(reader_.get(), part.data(), part.size());
            if (size <= 0) break;
            text.append(part.data(), static_cast<std::size_t>(size));
        }
        return text;
    }

private:
    FileDescriptor reader_;
    FileDescriptor writer_;
};

struct Shown {
    std::string onTerminal;
    ProgramResult elsewhere;
};

enum class OnTerminal { output, error, both };

Shown show(ProgramLaunch launch, OnTerminal streams = OnTerminal::both) {
    Terminal terminal;
    if (streams != OnTerminal::error) launch.output = terminal.writer();
    if (streams != OnTerminal::output) launch.error = terminal.writer();
    RunningProgram program(launch);
    auto text = terminal.readAll();
    return {std::move(text), program.wait()};
}

class OnATerminal : public testing::Test {
protected:
    OnATerminal() { writeFile(tree / "a", 1000); }

    [[nodiscard]] ProgramLaunch check() const { return brindle.launch({"check", tree}); }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(OnATerminal, ProgressIsShownThereAndNowhereElse) {
    EXPECT_THAT(show(check()).onTerminal, HasSubstr(progressText));
    EXPECT_THAT(show(check(), OnTerminal::error).onTerminal, HasSubstr(progressText));
    const auto withErrorElsewhere = show(check(), OnTerminal::output);
    EXPECT_THAT(withErrorElsewhere.onTerminal, Not(HasSubstr(progressText)));
    EXPECT_EQ(withErrorElsewhere.elsewhere.error, "");

    writeFile(tree / "b", 5);
    const auto piped = runProgram(check());
    EXPECT_EQ(piped.error, "");
    EXPECT_THAT(piped.output, HasSubstr("+5 bytes"));
    EXPECT_THAT(piped.output,
                Not(testing::AnyOf(HasSubstr("\r"), HasSubstr("\x1b"), HasSubstr(progressText))));
}

TEST_F(OnATerminal, StylesAreForThoseWhoWantThem) {
    ASSERT_EQ(runProgram(check()).exitCode, 0);
    const auto resultWith = [&](const char* variable, const char* value, OnTerminal streams) {
        fs::resize_file(tree / "a", fs::file_size(tree / "a") + 1);
        ProgramLaunch launch = check();
        launch.setVariable(variable, value);
        const auto shown = show(launch, streams);
        EXPECT_THAT(shown.onTerminal, HasSubstr("+1 byte"));
        return shown.onTerminal;
    };
    EXPECT_THAT(resultWith("TERM", "xterm", OnTerminal::output), HasSubstr(styleStart));
    EXPECT_THAT(resultWith("NO_COLOR", "", OnTerminal::output), HasSubstr(styleStart));  // empty is unset
    EXPECT_THAT(resultWith("NO_COLOR", "1", OnTerminal::output), Not(HasSubstr(styleStart)));
    EXPECT_THAT(resultWith("TERM", "dumb", OnTerminal::output), Not(HasSubstr(styleStart)));
    // A terminal that cannot clear a line shows what would clear it.
    EXPECT_THAT(resultWith("TERM", "dumb", OnTerminal::both), Not(HasSubstr(styleStart)));
}

TEST_F(OnATerminal, TablesAndSentencesFitItAndAreWholeElsewhere) {
    const std::string name(100, 'n');
    ASSERT_EQ(runProgram(check()).exitCode, 0);
    writeFile(tree / "folder" / name, 5000);
    ASSERT_EQ(runProgram(check()).exitCode, 0);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"changes"}, {"grew"}, {"trends", "quarter"}, {"trends", "month"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        ProgramLaunch launch = brindle.launch(arguments);
        launch.setVariable("NO_COLOR", "1");
        std::istringstream lines(show(launch, OnTerminal::output).onTerminal);
        for (std::string line; std::getline(lines, line);) {
            std::erase(line, '\r');
            EXPECT_LE(displayWidth(line), 80U) << line;
        }
    }
    EXPECT_THAT(brindle.run({"changes"}).output, HasSubstr("  +5.0 kB  added  tree/folder/" + name + "\n"));
}

/// Files and folders whose names would be instructions, lines of their own, or no text at all.
class HostileNames : public testing::Test {
protected:
    static constexpr const char* name = "x\x1b[2J\x1b]0;t\x07\n\r\x7f\xc2\x9b\xe2\x80\xae\xff";
    static constexpr const char* shownName = "x\\x1b[2J\\x1b]0;t\\x07\\n\\r\\x7f\\x9b\\u202e\xef\xbf\xbd";

    HostileNames() {
        writeFile(tree / "before", 10);
        EXPECT_EQ(brindle.run({"check", tree}).exitCode, 0);
        writeFile(tree / name / name, 1000);
        EXPECT_EQ(brindle.run({"check", tree}).exitCode, 0);
        fs::resize_file(tree / name / name, 999);
    }

    /// What is written beside the program's own sequences must be text in plain lines.
    static void expectHarmless(std::string rest) {
        for (const std::string_view own : {"\r", "\x1b[K", "\x1b[0m", "\x1b[1m", "\x1b[33m", "\x1b[36m"})
            for (auto at = rest.find(own); at != rest.npos; at = rest.find(own, at))
                rest.erase(at, own.size());
        EXPECT_NO_THROW((void)nlohmann::json(rest).dump()) << "not UTF-8";
        EXPECT_TRUE(std::ranges::none_of(rest, [](char c) {
            return (c >= 0 && c < ' ' && c != '\n') || c == '\x7f';
        })) << rest;
        EXPECT_THAT(rest, Not(testing::AnyOf(HasSubstr("\xc2\x9b"), HasSubstr("\xe2\x80\xae")))) << rest;
    }

    TempFolder folder;
    fs::path tree = folder.path() / name;
    Brindle brindle;
};

TEST_F(HostileNames, AreShownEscaped) {
    const fs::path nowhere = folder.path() / (std::string("nowhere") + name);
    const std::vector<std::vector<std::string>> commands{{"status"},
                                                         {"day"},
                                                         {"day", name},
                                                         {"check", tree},
                                                         {"locations"},
                                                         {"changes"},
                                                         {"changes", tree / name},
                                                         {"check", nowhere},
                                                         {"check", tree / name},
                                                         {"changes", nowhere},
                                                         {"changes", "--day", name},
                                                         {"include", nowhere},
                                                         {"include", tree},
                                                         {"remove", nowhere},
                                                         {"forget", tree}};
    for (const auto& command : commands) {
        SCOPED_TRACE(testing::PrintToString(command));
        const auto piped = brindle.run(command);
        EXPECT_THAT(piped.output + piped.error, HasSubstr(shownName));
        expectHarmless(piped.output);
        expectHarmless(piped.error);
        const auto shown = show(brindle.launch(command)).onTerminal;
        EXPECT_THAT(shown, HasSubstr(shownName));
        expectHarmless(shown);
    }
}

// A shell turns "*" into names of files, one of which may look like an option.
TEST_F(HostileNames, AreHarmlessWhenTheyAreNoArgumentsAndTextInJSON) {
    for (const auto& command : {std::vector<std::string>{"check", std::string("--") + name},
                                {name},
                                {"changes", "--limit", name}}) {
        const auto result = brindle.run(command);
        EXPECT_EQ(result.exitCode, 2);
        expectHarmless(result.error);
    }
    const std::string jsonName = "x\x1b[2J\x1b]0;t\x07\n\r\x7f\xc2\x9b\xe2\x80\xae\xef\xbf\xbd";
    const auto checked = brindle.json({"check"})["locations"][0];
    EXPECT_EQ(checked["name"], jsonName);
    EXPECT_EQ(checked["largestChanges"][0]["folder"], jsonName);
    EXPECT_EQ(brindle.json({"locations"})[0]["name"], jsonName);
    const auto changes = brindle.json({"changes", tree / name});
    for (const auto& change : changes["changes"]) EXPECT_EQ(change["name"], jsonName);
    fs::remove_all(tree);
    EXPECT_THAT(std::string(brindle.json({"check"}, 4)["locations"][0]["message"]), HasSubstr(shownName));
    EXPECT_EQ(brindle.json({"remove", tree})["name"], jsonName);
}

TEST_F(HostileNames, OfADriveAreShownEscaped) {
    SKIP_UNLESS_MOUNTS_WORK();
    const fs::path image = folder.path() / "image";
    if (!makeImage(image, "ext4")) GTEST_SKIP() << "there is no mkfs.ext4";
    const fs::path point = folder.path() / "drive" / name;
    fs::create_directories(point);
    const auto drive = TestMount::image(image, point);
    const auto listed = brindle.run({"drives"});
    EXPECT_THAT(listed.output, HasSubstr(shownName));
    expectHarmless(listed.output);
    EXPECT_TRUE(brindle.json({"drives"}).is_array());
    EXPECT_EQ(brindle.run({"check", point}).exitCode, 0);
    EXPECT_THAT(brindle.run({"locations"}).output, HasSubstr((folder.path() / "drive" / shownName).native()));
}

}  // namespace
}  // namespace brindle
