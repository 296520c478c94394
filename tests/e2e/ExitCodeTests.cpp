#include "e2e/Records.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using Arguments = std::vector<std::string>;

std::string contentsOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Nothing but one sentence, on standard error.
void expectOneSentence(const ProgramResult& result) {
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.error, EndsWith("\n"));
    EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << result.error;
}

class ExitCodes : public testing::Test {
protected:
    ExitCodes() {
        openToAll(folder.path());
        writeFile(tree / "inner/a", 10);
    }

    void expectUnusable(const Arguments& arguments) const {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, 3);
        expectOneSentence(result);
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(ExitCodes, NothingFoundIsNoFailure) {
    const auto expectNothing = [&](const Arguments& arguments, const std::string& sentence) {
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, HasSubstr(sentence));
        (void)brindle.json(arguments, 1);
    };
    expectNothing({"locations"}, "No locations included yet.\n");
    expectNothing({"status"}, "brindle check FOLDER");
    expectNothing({"day"}, "No check covers ");
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    expectNothing({"changes"}, "No changes are recorded.\n");
    expectNothing({"changes", "--day", "yesterday"}, "No changes are recorded.\n");
    expectNothing({"changes", tree / "inner"}, "No changes are recorded.\n");
}

TEST_F(ExitCodes, WrongUsageChangesNothing) {
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    const auto before = Records(brindle).everything();
    const fs::path other = folder.path() / "other";
    fs::create_directory(other);
    const struct {
        Arguments arguments;
        std::string sentence;
    } cases[] = {
        {{"changes", "--day", "2026-02-30"}, "“2026-02-30” isn't a day."},
        {{"changes", "--day", "tomorrow"}, "“tomorrow” isn't a day."},
        {{"changes", "--day", "today", "--since", "today"},
         "Give one of --day, --since, and --from with --to."},
        {{"changes", "--since", "today", "--to", "today"},
         "Give one of --day, --since, and --from with --to."},
        {{"changes", "--from", "today"}, "--from needs the last day as well"},
        {{"changes", "--to", "today"}, "--to needs the first day as well"},
        {{"changes", "--from", "today", "--to", "yesterday"}, "The period ends before it begins"},
        {{"changes", "--since", "9999-12-31"}, "Friday, December 31, 9999 is still to come."},
        {{"changes", "--from", "today", "--to", "9999-12-31"}, "is still to come."},
        {{"changes", "--limit", "-1"}, "“-1” isn't a whole number from 0."},
        {{"changes", "--page", "2x"}, "“2x” isn't a whole number from 1."},
        {{"changes", "--limit"}, "--limit needs a value."},
        {{"changes", "--limit", "1", "--limit", "2"}, "--limit can be given only once."},
        {{"changes", "--files", "--folders"}, "--files and --folders can't be given together."},
        {{"trends", "year"}, "“year” is none of these: week, month, quarter."},
        {{"changes", other}, "isn't in any included location."},
        {{"check", "--no-such-option"}, "There is no option “--no-such-option”."},
        {{"check", folder.path() / "absent"}, "isn't there."},
        {{"check", ""}, ""},  // an unset variable of a script, and no word for the working folder
        {{"check", tree / "inner/a"}, "isn't a folder."},
        {{"check", "/proc"}, "belongs to the system and holds no stored files."},
        {{"check", tree / "inner"}, "“inner” is already checked as part of “tree”."},
        {{"check", other, folder.path() / "absent"}, "isn't there."},  // and the good one is not included
        {{"include"}, "PATH is missing."},
        {{"include", other, "/proc"}, "belongs to the system and holds no stored files."},
        {{"include", tree}, "“tree” is already included."},
        {{"remove", other}, "isn't an included location."},
        {{"remove", ""}, ""},
        {{"forget", tree}, "“tree” has a history, which is never deleted."},
        {{}, "Which command?"},
        {{"--json"}, "Which command?"},
        {{"--no-such-option"}, "There is no option “--no-such-option”."},
        {{"no-such-command", "x"}, "There is no command “no-such-command”."},
        {{"status", "x"}, "“x” is one argument too many."},
    };
    for (const auto& [arguments, sentence] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, HasSubstr(sentence));
    }
    EXPECT_EQ(Records(brindle).everything(), before);
}

TEST_F(ExitCodes, WithoutACommandTheWindowOpensOrTheStatusIsShown) {
    ProgramLaunch launch = brindle.launch({});
    launch.arguments = {BRINDLE_PROGRAM};
    launch.setVariable("PATH", folder.path());
    launch.setVariable("DISPLAY", "");
    const auto expectStatus = [&] {
        const auto result = runProgram(launch);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.error, HasSubstr("No locations included yet."));
    };
    expectStatus();
    launch.setVariable("DISPLAY", ":32109");  // nobody answers there
    expectStatus();
    launch.setVariable("QT_QPA_PLATFORM", "offscreen");
    expectStatus();
    const fs::path window = folder.path() / "brindle-desktop";
    std::ofstream(window) << "#!/bin/sh\necho \"window $#\"\nexit 7\n";
    fs::permissions(window, fs::perms(0755));
    const auto result = runProgram(launch);
    EXPECT_EQ(result.exitCode, 7);
    EXPECT_EQ(result.output, "window 0\n");
    EXPECT_EQ(result.error, "");
    launch.setVariable("QT_QPA_PLATFORM", "");
    expectStatus();
}

TEST_F(ExitCodes, AHistoryThatCannotBeUsedIsLeftAsItIs) {
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    const auto whole = contentsOf(brindle.historyFile());
    std::string newer = whole;
    newer[60] = 1;  // the first byte of the version
    const struct {
        const char* name;
        std::string contents;
    } cases[] = {
        {"garbage", std::string(20'000, 'x')},
        {"truncated in a page", whole.substr(0, whole.size() / 2 + 100)},
        {"truncated at a page", whole.substr(0, whole.size() / 2 / 4096 * 4096)},
        {"cut off in its header", whole.substr(0, 50)},
        {"garbage behind its first page", whole.substr(0, 4096) + std::string(whole.size() - 4096, '\xa5')},
        {"of a newer version", newer},
    };
    for (const auto& [name, contents] : cases) {
        SCOPED_TRACE(name);
        std::ofstream(brindle.historyFile(), std::ios::binary) << contents;
        for (const Arguments& arguments :
             {Arguments{"check", tree}, {"locations"}, {"changes", "--json"}, {"watch"}})
            expectUnusable(arguments);
        EXPECT_TRUE(contentsOf(brindle.historyFile()) == contents);
    }
}

TEST_F(ExitCodes, ADataDirectoryThatCannotBeUsedIsTold) {
    if (!brindle.giveUpRoot()) GTEST_SKIP() << "the program cannot be started without rights";
    fs::permissions(brindle.home(), fs::perms(0555));
    expectUnusable({"check", tree});
    fs::permissions(brindle.home(), fs::perms(0755));
    ASSERT_EQ(brindle.run({"check", tree}).exitCode, 0);
    const auto before = Records(brindle).everything();

    fs::permissions(brindle.dataDirectory(), fs::perms(0500));
    expectUnusable({"check"});
    fs::permissions(brindle.dataDirectory(), fs::perms::none);
    expectUnusable({"check"});
    fs::permissions(brindle.dataDirectory(), fs::perms(0700));
    fs::permissions(brindle.historyFile(), fs::perms(0400));
    expectUnusable({"check"});
    EXPECT_EQ(Records(brindle).everything(), before);
    fs::permissions(brindle.historyFile(), fs::perms(0600));
    EXPECT_EQ(brindle.run({"check"}).exitCode, 0);  // nothing is left that would stand in its way

    fs::remove_all(brindle.dataDirectory());
    std::ofstream(brindle.dataDirectory()) << "a file";
    expectUnusable({"check", tree});
    EXPECT_EQ(contentsOf(brindle.dataDirectory()), "a file");
}

TEST_F(ExitCodes, AResultThatCannotBeWrittenIsTold) {
    const FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ProgramLaunch launch = brindle.launch({"check", tree});
    launch.output = full.get();
    const auto result = runProgram(launch);
    EXPECT_EQ(result.exitCode, 3);
    expectOneSentence(result);
    EXPECT_EQ(Records(brindle).inventory(), listingOf(tree));
}

}  // namespace
}  // namespace brindle
