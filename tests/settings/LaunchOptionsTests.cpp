#include "settings/LaunchOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace brindle {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

std::optional<std::string> noVariables(const char*) {
    return {};
}

SettingValues stored(const nlohmann::ordered_json& values) {
    return SettingValues(values);
}

std::optional<std::string> testHost(const char* name) {
    return std::string(name) == "XCTestConfigurationFilePath" ? std::optional<std::string>("") : std::nullopt;
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

TEST(LaunchOptions, AreTheUsualOnesUntilSomethingIsSet) {
    const LaunchOptions usual{.dataDirectory = defaultDataDirectory()};
    EXPECT_EQ(readLaunchOptions(SettingValues(), noVariables), usual);
    EXPECT_EQ(
        readLaunchOptions(stored({{"BrindleDataDirectory", ""}, {"BrindleExample", "yes"}}), noVariables),
        usual);
    EXPECT_EQ(readLaunchOptions(stored({{"BrindleDataDirectory", 7}}), noVariables), usual);
}

TEST(LaunchOptions, AnArgumentGoesBeforeWhatIsStored) {
    const nlohmann::ordered_json values{{"BrindleDataDirectory", "/stored//place/"},
                                        {"BrindleExample", true}};
    const auto asStored = readLaunchOptions(stored(values), noVariables);
    EXPECT_EQ(asStored.dataDirectory, "/stored/place");
    EXPECT_TRUE(asStored.startInExample);
    EXPECT_TRUE(asStored.trackingEnabled);

    const auto forOnce = readLaunchOptions(
        SettingValues(values, {{"BrindleDataDirectory", "/once"}, {"BrindleExample", "NO"}}), noVariables);
    EXPECT_EQ(forOnce.dataDirectory, "/once");
    EXPECT_FALSE(forOnce.startInExample);
    EXPECT_EQ(
        readLaunchOptions(SettingValues(values, {{"BrindleDataDirectory", ""}}), noVariables).dataDirectory,
        defaultDataDirectory());
}

TEST(LaunchOptions, AProgramOfTestsNeverSeesTheUsersFiles) {
    const auto options = readLaunchOptions(
        SettingValues({{"BrindleDataDirectory", "/stored"}}, {{"BrindleExample", "no"}}), testHost);
    EXPECT_EQ(options,
              (LaunchOptions{.dataDirectory = "/stored", .startInExample = true, .trackingEnabled = false}));
}

}  // namespace
}  // namespace brindle
