#include "e2e/Records.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>
#include <string_view>

namespace brindle {
namespace {

using testing::HasSubstr;

std::string manual(const std::string& page = "brindle.1") {
    std::ifstream file(BRINDLE_MANUALS "/" + page);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The first word of every line of a list that --help prints under this heading.
std::vector<std::string> listed(const std::string& help, const std::string& heading) {
    std::vector<std::string> words;
    std::istringstream lines(help.substr(std::min(help.find(heading), help.size())));
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && !line.empty()) {
        // What a long description is continued in lies further to the right.
        if (line.find_first_not_of(' ') == 2) words.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    return words;
}

/// The name of an option as the manual's source writes it; its short form is written by itself.
std::string inManual(std::string option) {
    if (const auto longForm = option.find("--"); longForm != option.npos) option.erase(0, longForm);
    std::string escaped;
    for (const char c : option) escaped += c == '-' ? "\\-" : std::string(1, c);
    return escaped;
}

TEST(Manual, HasASectionForEveryCommandAndTellsOfEveryOption) {
    const Brindle brindle;
    const std::string text = manual();
    const std::string help = brindle.run({"--help"}).output;
    const auto commands = listed(help, "Subcommands:");
    EXPECT_THAT(commands, testing::IsSupersetOf({"check", "changes"})) << "the test can read the help";
    for (const auto& option : listed(help, "Options:")) EXPECT_THAT(text, HasSubstr(inManual(option)));
    for (const auto& command : commands) {
        const auto begin = text.find("\n.SS brindle " + command);
        ASSERT_NE(begin, text.npos) << command;
        EXPECT_THAT(brindle.run({command, "--help"}).output, HasSubstr("\n  brindle " + command))
            << "every command has an example";
        const auto section = text.substr(begin, text.find("\n.S", begin + 1) - begin);
        auto options = listed(brindle.run({command, "--help"}).output, "Options:");
        std::erase(options, "-h,--help");
        for (const auto& option : options) EXPECT_THAT(section, HasSubstr(inManual(option))) << command;
    }
}

TEST(Manual, TellsOfEveryOptionOfTheWindow) {
    if (std::string_view(BRINDLE_DESKTOP_PROGRAM).empty()) GTEST_SKIP() << "built without the window";
    const std::string text = manual("brindle-desktop.1");
    const auto help = runProgram({.arguments = {BRINDLE_DESKTOP_PROGRAM, "--help"}, .environment = {}});
    EXPECT_EQ(help.exitCode, 0);
    const auto options = listed(help.output, "Options:");
    EXPECT_THAT(options, testing::IsSupersetOf({"--help", "-BrindleExample"}))
        << "the test can read the help";
    for (const auto& option : options) EXPECT_THAT(text, HasSubstr(inManual(option)));
}

TEST(Manual, TellsOfEveryTableAndColumnOfTheHistory) {
    const Brindle brindle;
    ASSERT_EQ(brindle.run({"check", brindle.home()}).exitCode, 0);
    const std::string text = manual("brindle-history.5");
    const Records records(brindle);
    EXPECT_THAT(text, HasSubstr("and is " + records.value("PRAGMA user_version") + " for this page"));
    const auto names = records.rows(
        "SELECT name FROM sqlite_master WHERE type = 'table' UNION SELECT columns.name FROM sqlite_master AS "
        "tables, pragma_table_info(tables.name) AS columns WHERE tables.type = 'table'");
    EXPECT_GT(names.size(), 40U);
    for (const auto& name : names)
        EXPECT_TRUE(std::regex_search(text, std::regex("\\b" + name + "\\b"))) << name;
}

TEST(Manual, IsFormattedWithoutAWarning) {
    const auto result =
        runProgram({.arguments = {"groff", "-ww", "-man", "-Tutf8", "-z", BRINDLE_MANUALS "/brindle.1",
                                  BRINDLE_MANUALS "/brindle-desktop.1", BRINDLE_MANUALS "/brindle-history.5"},
                    .environment = {"PATH=/usr/bin:/bin"}});
    if (result.exitCode == 127) GTEST_SKIP() << "there is no groff";
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
}

}  // namespace
}  // namespace brindle
