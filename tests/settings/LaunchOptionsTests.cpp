#include "settings/LaunchOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace brindle {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

std::optional<std::string> noVariables(const char*) {
    return {};
}

TEST(LaunchArguments, AreKeysWithOneDashAndTheirValues) {
    const std::vector<const char*> arguments{
        "stray", "-a",   "1",  "--option", "x",  "-b",          "-c",     "two", "-",          "y",
        "-a",    "last", "-d", "--quiet",  "-e", "/with space", "-empty", "",    "-unfinished"};
    EXPECT_THAT(parseLaunchArguments(arguments),
                UnorderedElementsAre(Pair("a", "last"), Pair("c", "two"), Pair("e", "/with space"),
                                     Pair("empty", "")));
    EXPECT_TRUE(parseLaunchArguments({}).empty());
}

TEST(LaunchOptions, AnArgumentGoesBeforeWhatIsStoredAndSomethingSensibleBeforeTheUsual) {
    const std::string usual = defaultDataDirectory();
    const nlohmann::ordered_json nothing;
    const nlohmann::ordered_json senseless{{"BrindleDataDirectory", 7}, {"BrindleExample", "yes"}};
    const nlohmann::ordered_json set{{"BrindleDataDirectory", "/stored//place/"}, {"BrindleExample", true}};
    const struct {
        SettingValues values;
        LaunchOptions expected;
    } cases[] = {
        {SettingValues(nothing), {.dataDirectory = usual}},
        {SettingValues(senseless), {.dataDirectory = usual}},
        {SettingValues(set), {.dataDirectory = "/stored/place", .startInExample = true}},
        {SettingValues(set, {{"BrindleDataDirectory", "/once"}, {"BrindleExample", "NO"}}),
         {.dataDirectory = "/once"}},
        {SettingValues(set, {{"BrindleDataDirectory", ""}}),
         {.dataDirectory = usual, .startInExample = true}},
    };
    for (const auto& [values, expected] : cases) EXPECT_EQ(readLaunchOptions(values, noVariables), expected);
}

TEST(LaunchOptions, AProgramOfTestsNeverSeesTheUsersFiles) {
    const auto testHost = [](const std::string& name) {
        return name == "XCTestConfigurationFilePath" ? std::optional<std::string>("") : std::nullopt;
    };
    const SettingValues values({{"BrindleDataDirectory", "/stored"}}, {{"BrindleExample", "no"}});
    EXPECT_EQ(readLaunchOptions(values, testHost),
              (LaunchOptions{.dataDirectory = "/stored", .startInExample = true, .trackingEnabled = false}));
}

}  // namespace
}  // namespace brindle
