#include "e2e/Brindle.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace brindle {
namespace {

using testing::UnorderedElementsAreArray;
using Words = std::vector<std::string>;

struct Case {
    Words typed;  // the last is the one to be completed
    Words offered;
};

const Case completions[] = {
    {{"ch"}, {"check", "changes"}},
    {{"trends", ""}, {"week", "month", "quarter"}},
    {{"--example", "changes", "--sort", ""}, {"largest", "newest", "name"}},
    {{"grew", "--since", "y"}, {"yesterday"}},
    {{"changes", "--fo"}, {"--folder", "--folders"}},
    {{"status", "--js"}, {"--json"}},
};

/// What each shell makes of the script that the program prints for it.
class Completion : public testing::Test {
protected:
    [[nodiscard]] std::string scriptFor(const std::string& shell) const {
        const auto file = folder.path() / shell;
        const auto result = brindle.run({"--completion", shell});
        EXPECT_EQ(result.exitCode, 0) << result.error;
        std::ofstream(file) << result.output;
        return file;
    }
    [[nodiscard]] Words linesFrom(Words arguments) const {
        const auto result = runProgram(
            {.arguments = std::move(arguments),
             .environment = {"PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "HOME=" + brindle.home().native()},
             .folder = folder.path()});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.error, "");
        Words lines;
        std::istringstream text(result.output);
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }
    [[nodiscard]] Words inBash(const Words& typed) const {
        // What is only there while bash completes does nothing.
        const std::string ask =
            "compopt() { :; }; source \"$1\"; shift; COMP_WORDS=(brindle \"$@\"); COMP_CWORD=$#; _brindle;"
            "[[ ${#COMPREPLY[@]} == 0 ]] || printf '%s\\n' \"${COMPREPLY[@]}\"";
        Words arguments{"bash", "-c", ask, "bash", scriptFor("bash")};
        arguments.insert(arguments.end(), typed.begin(), typed.end());
        return linesFrom(arguments);
    }
    [[nodiscard]] Words inFish(const Words& typed) const {
        std::string line = "brindle";
        for (const std::string& word : typed) line += " " + word;
        Words words = linesFrom(
            {"fish", "--no-config", "-c", "source " + scriptFor("fish") + "; complete -C '" + line + "'"});
        for (std::string& word : words) word = word.substr(0, word.find('\t'));  // then a description
        return words;
    }

    const Brindle brindle;
    TempFolder folder;
};

TEST_F(Completion, OffersWhatTheProgramTakes) {
    for (const auto& [typed, offered] : completions) {
        SCOPED_TRACE(testing::PrintToString(typed));
        EXPECT_THAT(inBash(typed), UnorderedElementsAreArray(offered));
        EXPECT_THAT(inFish(typed), UnorderedElementsAreArray(offered));
    }
}

TEST_F(Completion, OffersFoldersAndFilesWithSpacesInTheirNames) {
    std::filesystem::create_directory(folder.path() / "a folder");
    writeFile(folder.path() / "a file", 1);
    EXPECT_THAT(inBash({"check", "a"}), UnorderedElementsAreArray({"a folder"}));
    EXPECT_THAT(inBash({"export", "-o", "a"}), UnorderedElementsAreArray({"a folder", "a file"}));
}

TEST_F(Completion, IsUnderstoodByZsh) {
    EXPECT_THAT(linesFrom({"zsh", "-n", scriptFor("zsh")}), testing::IsEmpty());
}

}  // namespace
}  // namespace brindle
