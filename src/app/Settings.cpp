#include "app/Settings.h"

#include <algorithm>
#include <array>

namespace brindle {

Settings::Settings(const Preferences& values, SettingsFile file, QObject* parent)
    : QObject(parent), values_(values), file_(std::move(file)), writer_("Brindle.setting") {}

template <class Value>
void Settings::set(const PreferenceKey<Value>& key, Value value, void (Settings::*changed)()) {
    if (values_.*key.field == value) return;
    values_.*key.field = value;
    static_cast<void>(writer_.perform([this, key, value] {
        std::string note;
        try {
            note = writePreference(file_, key, value).value_or("");
        } catch (const SettingsError& error) {
            note = error.what();
        }
        if (!note.empty()) Q_EMIT noted(QString::fromStdString(note));
    }));
    Q_EMIT(this->*changed)();
}

void Settings::setAppearance(AppearanceMode mode) {
    set(preferenceKeys::appearance, mode, &Settings::appearanceChanged);
}

void Settings::setTextSize(TextSize size) {
    set(preferenceKeys::textSize, size, &Settings::textSizeChanged);
}

void Settings::setCheckInterval(int minutes) {
    if (std::ranges::find(checkIntervals, minutes) == checkIntervals.end()) return;
    set(preferenceKeys::checkInterval, minutes, &Settings::checkIntervalChanged);
}

void Settings::setChecksPaused(bool paused) {
    set(preferenceKeys::checksPaused, paused, &Settings::checksPausedChanged);
}

void Settings::setShowsMenuBarItem(bool shows) {
    set(preferenceKeys::showsMenuBarItem, shows, &Settings::showsMenuBarItemChanged);
}

void Settings::setMiniWindowKeepsOnTop(bool keeps) {
    set(preferenceKeys::miniWindowKeepsOnTop, keeps, &Settings::miniWindowKeepsOnTopChanged);
}

void Settings::setOpensQuietlyAtLogin(bool opensQuietly) {
    set(preferenceKeys::opensQuietlyAtLogin, opensQuietly, &Settings::opensQuietlyAtLoginChanged);
}

void Settings::setShowsEstimates(bool shows) {
    set(preferenceKeys::showsEstimates, shows, &Settings::showsEstimatesChanged);
}

void Settings::setNotifiesAboutGrowth(bool notifies) {
    set(preferenceKeys::notifiesAboutGrowth, notifies, &Settings::notifiesAboutGrowthChanged);
}

void Settings::setStartupSetupCompleted(bool completed) {
    set(preferenceKeys::startupSetupCompleted, completed, &Settings::startupSetupCompletedChanged);
}

void Settings::setMainWindowFrame(const std::string& frame) {
    set(preferenceKeys::mainWindowFrame, frame, &Settings::mainWindowFrameChanged);
}

void Settings::setMiniWindowFrame(const std::string& frame) {
    set(preferenceKeys::miniWindowFrame, frame, &Settings::miniWindowFrameChanged);
}

void Settings::setToldNotices(const std::string& told) {
    set(preferenceKeys::toldNotices, told, &Settings::toldNoticesChanged);
}

}  // namespace brindle
