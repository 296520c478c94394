#include "e2e/Records.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Arguments = std::vector<std::string>;

const Arguments readingCommands[] = {{"status"},
                                     {"locations"},
                                     {"drives"},
                                     {"day"},
                                     {"day", "yesterday"},
                                     {"changes", "--since", "yesterday"},
                                     {"trends", "quarter"},
                                     {"grew", "--since", "yesterday"}};

TEST(ExampleHistory, IsShownByEveryCommandThatReadsAndLeavesNoTrace) {
    const Brindle brindle;
    for (Arguments arguments : readingCommands) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        // Yesterday, the computer may have been off.
        const bool mayHaveNoCheck = arguments.back() == "yesterday";
        arguments.emplace_back("--example");
        const auto result = brindle.run(arguments);
        EXPECT_TRUE(result.exitCode == 0 || (mayHaveNoCheck && result.exitCode == 1));
        EXPECT_THAT(result.error, HasSubstr("This is example history.\n"));
        const auto json = brindle.json(arguments, result.exitCode);
        const auto isMarked = [](const auto& one) { return one.value("isExample", false); };
        EXPECT_TRUE(json.is_array() ? std::ranges::all_of(json, isMarked) : isMarked(json)) << json;
    }
    EXPECT_THAT(brindle.run({"--example", "status"}).output,
                AllOf(HasSubstr("Home  /home/ann\n"), HasSubstr("Studio SSD  /Volumes/Studio SSD\n"),
                      HasSubstr(" free of ")));
    EXPECT_TRUE(fs::is_empty(brindle.home()));
}

TEST(ExampleHistory, IsNeverCheckedOrChanged) {
    const Brindle brindle;
    const TempFolder folder;
    const std::string path = folder.path().native();
    for (const Arguments& arguments : {Arguments{"check"},
                                       {"check", path},
                                       {"include", path},
                                       {"remove", path},
                                       {"forget", path},
                                       {"watch"},
                                       {"estimates"},
                                       {"estimates", "on"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        Arguments withExample = arguments;
        withExample.emplace_back("--example");
        const auto result = brindle.run(withExample);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.error, "There is nothing to check or to change in the example history.\n");
    }
    EXPECT_TRUE(fs::is_empty(brindle.home()));
}

TEST(ExampleHistory, IsNotToldOfWhereNothingIsShown) {
    const auto result = Brindle().run({"--example", "changes", "--day", "2026-02-30"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.error, testing::StartsWith("“2026-02-30” isn't a day."));
}

TEST(ExampleHistory, IsNotMixedWithOnesOwn) {
    const Brindle brindle;
    const TempFolder tree;
    writeFile(tree.path() / "a", 10);
    ASSERT_EQ(brindle.run({"check", tree.path()}).exitCode, 0);
    const auto before = Records(brindle).everything();
    for (const Arguments& arguments : readingCommands) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const std::string own = brindle.run(arguments).output;
        EXPECT_THAT(own, AllOf(Not(HasSubstr("Studio SSD")), Not(HasSubstr("isExample"))));
        Arguments withExample = arguments;
        withExample.insert(withExample.begin(), "--example");
        EXPECT_THAT(brindle.run(withExample).output, Not(HasSubstr(tree.path().native())));
    }
    EXPECT_EQ(Records(brindle).everything(), before);
}

}  // namespace
}  // namespace brindle
