#pragma once

#include "app/Updater.h"

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace brindle {

/// Updates as the window shows them. Whether there are any is decided once: a build without a feed never
/// touches the network.
/// Thread: the main thread.
class UpdateController final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY changed)
    Q_PROPERTY(bool checksAutomatically READ checksAutomatically WRITE setChecksAutomatically NOTIFY changed)
    Q_PROPERTY(QString readyVersion READ readyVersion NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)

public:
    enum class Unavailable {
        developmentBuild,  // tracking is off
        notConfigured,     // the build has no feed, or no key to check its packages with
    };

    /// `information`: of the program (settings/ProgramInformation.h). `isBusy`: whether a check of files is
    /// running.
    UpdateController(bool trackingEnabled, const SettingValues& information, UpdateServices services,
                     std::function<bool()> isBusy, QObject* parent = nullptr);

    [[nodiscard]] std::optional<Unavailable> unavailable() const { return unavailable_; }

    [[nodiscard]] bool canCheckForUpdates() const { return updater_ && updater_->canCheck(); }
    void checkForUpdates();

    [[nodiscard]] bool checksAutomatically() const { return updater_ && updater_->checksAutomatically(); }
    void setChecksAutomatically(bool automatically);

    /// The version that lies ready to be installed; empty when none does.
    [[nodiscard]] QString readyVersion() const;
    /// What is going on or what came of it, in a sentence; empty at first.
    [[nodiscard]] QString message() const;

    /// Installs the version that lies ready, now or once no check of files is running.
    void install();
    /// Whether an installation waits for a check of files to finish.
    [[nodiscard]] bool hasPostponedInstall() const { return static_cast<bool>(postponedInstall_); }
    /// To be called when a check of files has finished.
    void runPostponedInstall();

Q_SIGNALS:
    void changed();
    /// Something that the user should know: what was set could not be stored.
    void noted(const QString& sentence);

private:
    std::optional<Unavailable> unavailable_;
    std::function<bool()> isBusy_;
    std::function<void()> postponedInstall_;
    std::unique_ptr<Updater> updater_;  // none when unavailable
};

/// For the about window.
[[nodiscard]] std::string aboutSentence();
/// What installing an update means, for the settings and the about window.
[[nodiscard]] std::string installSentence();
/// For the settings.
[[nodiscard]] std::string settingsSentence(UpdateController::Unavailable reason);

}  // namespace brindle
