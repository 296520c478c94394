#include "settings/Preferences.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

using Json = nlohmann::ordered_json;

struct ReadCase {
    const char* name;
    Json stored;
    LaunchArguments arguments;
    Preferences expected;
};

class ReadingPreferences : public testing::TestWithParam<ReadCase> {};

TEST_P(ReadingPreferences, FallsBackWhereNothingSensibleIsSet) {
    const auto& [name, stored, arguments, expected] = GetParam();
    EXPECT_EQ(readPreferences(SettingValues(stored, arguments)), expected);
}

Json mistyped(const Json& value) {
    Json values;
    for (const char* key :
         {"appearance", "textSize", "checkInterval", "checksPaused", "showsMenuBarItem",
          "miniWindowKeepsOnTop", "opensQuietlyAtLogin", "showsEstimates", "startupSetupCompleted"})
        values[key] = value;
    return values;
}

INSTANTIATE_TEST_SUITE_P(
    Preferences, ReadingPreferences,
    testing::Values(
        ReadCase{"Nothing", Json::object(), {}, {}},
        ReadCase{"Everything",
                 {{"appearance", "system"},
                  {"textSize", "extraLarge"},
                  {"checkInterval", 15},
                  {"checksPaused", true},
                  {"showsMenuBarItem", false},
                  {"miniWindowKeepsOnTop", true},
                  {"opensQuietlyAtLogin", true},
                  {"showsEstimates", true},
                  {"startupSetupCompleted", true}},
                 {},
                 {AppearanceMode::system, TextSize::extraLarge, 15, true, false, true, true, true, true}},
        ReadCase{"Numbers", mistyped(1), {}, {}}, ReadCase{"Texts", mistyped("no"), {}, {}},
        ReadCase{"Nulls", mistyped(nullptr), {}, {}},
        ReadCase{"Lists", mistyped(Json::array({true})), {}, {}},
        ReadCase{"OtherLetters", {{"appearance", "Light"}, {"textSize", "Large"}}, {}, {}},
        ReadCase{"NoIntervalOfOurs", {{"checkInterval", 10}}, {}, {}},
        ReadCase{"HugeInterval", {{"checkInterval", 18446744073709551615ULL}}, {}, {}},
        ReadCase{"WholeFraction", {{"checkInterval", 30.0}}, {}, {.checkInterval = 30}},
        ReadCase{"Fraction", {{"checkInterval", 30.5}}, {}, {}},
        ReadCase{"HugeFraction", {{"checkInterval", 1e300}}, {}, {}},
        ReadCase{"ArgumentsFirst",
                 {{"appearance", "light"}, {"checkInterval", 15}, {"showsMenuBarItem", true}},
                 {{"appearance", "system"}, {"checkInterval", "60"}, {"showsMenuBarItem", "NO"}},
                 {.appearance = AppearanceMode::system, .checkInterval = 60, .showsMenuBarItem = false}},
        ReadCase{"SenselessArgumentsHideWhatIsStored",
                 {{"appearance", "light"}, {"checkInterval", 15}, {"checksPaused", true}},
                 {{"appearance", "pink"}, {"checkInterval", "15 minutes"}, {"checksPaused", "perhaps"}},
                 {}}),
    [](const auto& test) { return test.param.name; });

TEST(Preferences, WhatIsWrittenIsReadAgain) {
    const TempFolder folder;
    const SettingsFile file((folder.path() / "preferences.json").native());
    Preferences expected;
    const auto set = [&](const auto& key, auto value) {
        EXPECT_FALSE(writePreference(file, key, value));
        expected.*key.field = value;
        EXPECT_EQ(readPreferences(SettingValues(file.read().values)), expected) << key.name;
    };
    for (const auto mode : {AppearanceMode::light, AppearanceMode::system, AppearanceMode::dark})
        set(preferenceKeys::appearance, mode);
    for (const auto size : {TextSize::large, TextSize::extraLarge, TextSize::standard})
        set(preferenceKeys::textSize, size);
    for (const int minutes : {60, 30, 15, 5}) set(preferenceKeys::checkInterval, minutes);
    for (const auto& key : {preferenceKeys::checksPaused, preferenceKeys::showsMenuBarItem,
                            preferenceKeys::miniWindowKeepsOnTop, preferenceKeys::opensQuietlyAtLogin,
                            preferenceKeys::showsEstimates, preferenceKeys::startupSetupCompleted})
        for (const bool value : {true, false}) set(key, value);
}

}  // namespace
}  // namespace brindle
