#include "settings/Preferences.h"

#include "model/RawText.h"

namespace brindle {
namespace {

constexpr RawTextRow<AppearanceMode> appearanceModes[] = {
    {AppearanceMode::dark, "dark"}, {AppearanceMode::light, "light"}, {AppearanceMode::system, "system"}};

constexpr RawTextRow<TextSize> textSizes[] = {
    {TextSize::standard, "standard"}, {TextSize::large, "large"}, {TextSize::extraLarge, "extraLarge"}};

std::optional<AppearanceMode> valueOf(const SettingValues& settings,
                                      const PreferenceKey<AppearanceMode>& key) {
    return appearanceModeFrom(settings.text(key.name).value_or(""));
}

std::optional<TextSize> valueOf(const SettingValues& settings, const PreferenceKey<TextSize>& key) {
    return textSizeFrom(settings.text(key.name).value_or(""));
}

std::optional<int> valueOf(const SettingValues& settings, const PreferenceKey<int>& key) {
    const auto minutes = settings.integer(key.name);
    for (const int known : checkIntervals)
        if (minutes == known) return known;
    return {};
}

std::optional<bool> valueOf(const SettingValues& settings, const PreferenceKey<bool>& key) {
    return key.field == &Preferences::showsMenuBarItem ? settings.storedBoolean(key.name)
                                                       : settings.boolean(key.name);
}

std::optional<std::string> valueOf(const SettingValues& settings, const PreferenceKey<std::string>& key) {
    return settings.text(key.name);
}

}  // namespace

std::string_view rawText(AppearanceMode mode) {
    return rawTextOf<AppearanceMode>(appearanceModes, mode);
}
std::string_view rawText(TextSize size) {
    return rawTextOf<TextSize>(textSizes, size);
}

std::optional<AppearanceMode> appearanceModeFrom(std::string_view rawText) {
    return caseOf<AppearanceMode>(appearanceModes, rawText);
}
std::optional<TextSize> textSizeFrom(std::string_view rawText) {
    return caseOf<TextSize>(textSizes, rawText);
}

Preferences readPreferences(const SettingValues& settings) {
    Preferences preferences;
    const auto read = [&](const auto&... keys) {
        const auto readOne = [&](const auto& key) {
            if (const auto value = valueOf(settings, key)) preferences.*key.field = *value;
        };
        (readOne(keys), ...);
    };
    using namespace preferenceKeys;
    read(appearance, textSize, checkInterval, checksPaused, showsMenuBarItem, miniWindowKeepsOnTop,
         opensQuietlyAtLogin, showsEstimates, notifiesAboutGrowth, startupSetupCompleted, mainWindowFrame,
         miniWindowFrame, toldNotices);
    return preferences;
}

void to_json(nlohmann::ordered_json& json, AppearanceMode mode) {
    json = rawText(mode);
}
void to_json(nlohmann::ordered_json& json, TextSize size) {
    json = rawText(size);
}

}  // namespace brindle
