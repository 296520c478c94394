#pragma once

#include "settings/SettingValues.h"
#include "settings/SettingsFile.h"

#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

enum class AppearanceMode { dark, light, system };
enum class TextSize { standard, large, extraLarge };

/// The texts under which the values are stored.
[[nodiscard]] std::string_view rawText(AppearanceMode mode);
[[nodiscard]] std::string_view rawText(TextSize size);
/// Nothing for unknown texts.
[[nodiscard]] std::optional<AppearanceMode> appearanceModeFrom(std::string_view rawText);
[[nodiscard]] std::optional<TextSize> textSizeFrom(std::string_view rawText);

/// The choices of minutes between automatic checks.
inline constexpr std::array checkIntervals{5, 15, 30, 60};

/// What the user has set, and what holds until then.
struct Preferences {
    AppearanceMode appearance = AppearanceMode::dark;
    TextSize textSize = TextSize::standard;
    int checkInterval = 5;  // minutes, one of checkIntervals
    bool checksPaused = false;
    bool showsMenuBarItem = true;
    bool miniWindowKeepsOnTop = false;
    bool opensQuietlyAtLogin = false;
    bool showsEstimates = false;
    bool notifiesAboutGrowth = false;
    bool startupSetupCompleted = false;
    std::string mainWindowFrame;  // "x y width height", as the window was left; empty before it was shown
    std::string miniWindowFrame;  // likewise
    std::string toldNotices;      // what the user was told and when, as ToldNotices has it

    bool operator==(const Preferences&) const = default;
};

/// The name that a preference is stored under, and the field that it is read into.
template <class Value>
struct PreferenceKey {
    const char* name;
    Value Preferences::*field;
};

namespace preferenceKeys {
inline constexpr PreferenceKey<AppearanceMode> appearance{"appearance", &Preferences::appearance};
inline constexpr PreferenceKey<TextSize> textSize{"textSize", &Preferences::textSize};
inline constexpr PreferenceKey<int> checkInterval{"checkInterval", &Preferences::checkInterval};
inline constexpr PreferenceKey<bool> checksPaused{"checksPaused", &Preferences::checksPaused};
inline constexpr PreferenceKey<bool> showsMenuBarItem{"showsMenuBarItem", &Preferences::showsMenuBarItem};
inline constexpr PreferenceKey<bool> miniWindowKeepsOnTop{"miniWindowKeepsOnTop",
                                                          &Preferences::miniWindowKeepsOnTop};
inline constexpr PreferenceKey<bool> opensQuietlyAtLogin{"opensQuietlyAtLogin",
                                                         &Preferences::opensQuietlyAtLogin};
inline constexpr PreferenceKey<bool> showsEstimates{"showsEstimates", &Preferences::showsEstimates};
inline constexpr PreferenceKey<bool> notifiesAboutGrowth{"notifiesAboutGrowth",
                                                         &Preferences::notifiesAboutGrowth};
inline constexpr PreferenceKey<bool> startupSetupCompleted{"startupSetupCompleted",
                                                           &Preferences::startupSetupCompleted};
inline constexpr PreferenceKey<std::string> mainWindowFrame{"BrindleMainWindow",
                                                            &Preferences::mainWindowFrame};
inline constexpr PreferenceKey<std::string> miniWindowFrame{"BrindleMiniWindow",
                                                            &Preferences::miniWindowFrame};
inline constexpr PreferenceKey<std::string> toldNotices{"toldNotices", &Preferences::toldNotices};
}  // namespace preferenceKeys

/// Never fails: what is missing, of another type or unknown has its default. For `showsMenuBarItem` an
/// argument is of another type, as it is a text.
[[nodiscard]] Preferences readPreferences(const SettingValues& settings);

void to_json(nlohmann::ordered_json& json, AppearanceMode mode);
void to_json(nlohmann::ordered_json& json, TextSize size);

/// Stores one preference and leaves all others, also those of other programs, as they are by now. Returns and
/// throws as SettingsFile::write() does.
template <class Value>
std::optional<std::string> writePreference(const SettingsFile& file, const PreferenceKey<Value>& key,
                                           Value value) {
    return file.write(key.name, nlohmann::ordered_json(value));
}

}  // namespace brindle
