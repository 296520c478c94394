#include "settings/Preferences.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

using Json = nlohmann::ordered_json;

TEST(Preferences, FallBackWhereNothingSensibleIsSet) {
    const struct {
        Json stored;
        LaunchArguments arguments;
        Preferences expected;
    } cases[] = {
        {Json::object(), {}, {}},
        {{{"appearance", "Light"}, {"textSize", "Large"}, {"checkInterval", 10}}, {}, {}},
        {{{"checkInterval", 18446744073709551615ULL}}, {}, {}},
        {{{"checkInterval", 30.0}}, {}, {.checkInterval = 30}},
        {{{"checkInterval", 30.5}}, {}, {}},
        {{{"checkInterval", 1e300}}, {}, {}},
        {{{"appearance", "light"}, {"checkInterval", 15}, {"showsMenuBarItem", true}},
         {{"appearance", "system"}, {"checkInterval", "60"}, {"showsMenuBarItem", "NO"}},
         {.appearance = AppearanceMode::system, .checkInterval = 60}},
        // Senseless arguments hide what is stored.
        {{{"appearance", "light"}, {"checkInterval", 15}, {"checksPaused", true}},
         {{"appearance", "pink"}, {"checkInterval", "15 minutes"}, {"checksPaused", "perhaps"}},
         {}},
    };
    for (const auto& [stored, arguments, expected] : cases)
        EXPECT_EQ(readPreferences(SettingValues(stored, arguments)), expected) << stored;

    for (const Json& mistyped : {Json(1), Json("no"), Json(), Json::array({true})}) {
        Json values;
        for (const char* key : {"appearance", "textSize", "checkInterval", "checksPaused", "showsMenuBarItem",
                                "miniWindowKeepsOnTop", "opensQuietlyAtLogin", "showsEstimates",
                                "notifiesAboutGrowth", "startupSetupCompleted"})
            values[key] = mistyped;
        EXPECT_EQ(readPreferences(SettingValues(values)), Preferences()) << mistyped;
    }
}

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
                            preferenceKeys::showsEstimates, preferenceKeys::notifiesAboutGrowth,
                            preferenceKeys::startupSetupCompleted})
        for (const bool value : {true, false}) set(key, value);
}

}  // namespace
}  // namespace brindle
