#pragma once

#include "platform/TaskThread.h"
#include "settings/Preferences.h"

#include <QObject>
#include <QString>

namespace brindle {

/// The user's preferences while the program runs: read once, and stored as they are set.
///
/// A preference that an argument of this launch has set is stored too when the user sets it again.
/// Thread: main. Storing is done elsewhere, in the order of setting; the destructor waits for it.
class Settings : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        brindle::AppearanceMode appearance READ appearance WRITE setAppearance NOTIFY appearanceChanged)
    Q_PROPERTY(brindle::TextSize textSize READ textSize WRITE setTextSize NOTIFY textSizeChanged)
    Q_PROPERTY(int checkInterval READ checkInterval WRITE setCheckInterval NOTIFY checkIntervalChanged)
    Q_PROPERTY(bool checksPaused READ checksPaused WRITE setChecksPaused NOTIFY checksPausedChanged)
    Q_PROPERTY(
        bool showsMenuBarItem READ showsMenuBarItem WRITE setShowsMenuBarItem NOTIFY showsMenuBarItemChanged)
    Q_PROPERTY(bool miniWindowKeepsOnTop READ miniWindowKeepsOnTop WRITE setMiniWindowKeepsOnTop NOTIFY
                   miniWindowKeepsOnTopChanged)
    Q_PROPERTY(bool opensQuietlyAtLogin READ opensQuietlyAtLogin WRITE setOpensQuietlyAtLogin NOTIFY
                   opensQuietlyAtLoginChanged)
    Q_PROPERTY(bool showsEstimates READ showsEstimates WRITE setShowsEstimates NOTIFY showsEstimatesChanged)
    Q_PROPERTY(bool notifiesAboutGrowth READ notifiesAboutGrowth WRITE setNotifiesAboutGrowth NOTIFY
                   notifiesAboutGrowthChanged)

public:
    Settings(const Preferences& values, SettingsFile file, QObject* parent = nullptr);

    [[nodiscard]] const Preferences& values() const { return values_; }
    [[nodiscard]] AppearanceMode appearance() const { return values_.appearance; }
    [[nodiscard]] TextSize textSize() const { return values_.textSize; }
    [[nodiscard]] int checkInterval() const { return values_.checkInterval; }
    [[nodiscard]] bool checksPaused() const { return values_.checksPaused; }
    [[nodiscard]] bool showsMenuBarItem() const { return values_.showsMenuBarItem; }
    [[nodiscard]] bool miniWindowKeepsOnTop() const { return values_.miniWindowKeepsOnTop; }
    [[nodiscard]] bool opensQuietlyAtLogin() const { return values_.opensQuietlyAtLogin; }
    [[nodiscard]] bool showsEstimates() const { return values_.showsEstimates; }
    [[nodiscard]] bool notifiesAboutGrowth() const { return values_.notifiesAboutGrowth; }
    [[nodiscard]] bool startupSetupCompleted() const { return values_.startupSetupCompleted; }
    [[nodiscard]] const std::string& mainWindowFrame() const { return values_.mainWindowFrame; }
    [[nodiscard]] const std::string& miniWindowFrame() const { return values_.miniWindowFrame; }
    [[nodiscard]] const std::string& toldNotices() const { return values_.toldNotices; }

    void setAppearance(AppearanceMode mode);
    void setTextSize(TextSize size);
    /// 5, 15, 30 or 60 minutes; nothing else is taken.
    void setCheckInterval(int minutes);
    void setChecksPaused(bool paused);
    void setShowsMenuBarItem(bool shows);
    void setMiniWindowKeepsOnTop(bool keeps);
    void setOpensQuietlyAtLogin(bool opensQuietly);
    void setShowsEstimates(bool shows);
    void setNotifiesAboutGrowth(bool notifies);
    void setStartupSetupCompleted(bool completed);
    void setMainWindowFrame(const std::string& frame);
    void setMiniWindowFrame(const std::string& frame);
    void setToldNotices(const std::string& told);

Q_SIGNALS:
    void appearanceChanged();
    void textSizeChanged();
    void checkIntervalChanged();
    void checksPausedChanged();
    void showsMenuBarItemChanged();
    void miniWindowKeepsOnTopChanged();
    void opensQuietlyAtLoginChanged();
    void showsEstimatesChanged();
    void notifiesAboutGrowthChanged();
    void startupSetupCompletedChanged();
    void mainWindowFrameChanged();
    void miniWindowFrameChanged();
    void toldNoticesChanged();
    /// Something that the user should know: a setting could not be stored, or what was stored was damaged.
    void noted(const QString& sentence);

private:
    template <class Value>
    void set(const PreferenceKey<Value>& key, Value value, void (Settings::*changed)());

    Preferences values_;
    SettingsFile file_;
    TaskThread writer_;  // last, so that it ends first
};

}  // namespace brindle
