#pragma once

#include "app/UpdateController.h"

#include <QObject>
#include <QString>

namespace brindle {

/// The settings of software updates, with what the last look for one brought and what can be done about it.
/// Thread: main.
class UpdateSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isAvailable READ isAvailable CONSTANT)
    Q_PROPERTY(QString unavailableText READ unavailableText CONSTANT)
    Q_PROPERTY(bool checksAutomatically READ checksAutomatically WRITE setChecksAutomatically NOTIFY changed)
    Q_PROPERTY(QString note READ note CONSTANT)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(bool canCheckNow READ canCheckNow NOTIFY changed)
    Q_PROPERTY(bool hasUpdate READ hasUpdate NOTIFY changed)
    Q_PROPERTY(bool canInstall READ canInstall NOTIFY changed)
    Q_PROPERTY(QString installTitle READ installTitle NOTIFY changed)
    Q_PROPERTY(QString requestText READ requestText CONSTANT)

public:
    explicit UpdateSettings(UpdateController& updates, QObject* parent = nullptr);

    [[nodiscard]] bool isAvailable() const { return !updates_.unavailable(); }
    /// Empty when updates are available.
    [[nodiscard]] QString unavailableText() const;
    [[nodiscard]] bool checksAutomatically() const { return updates_.checksAutomatically(); }
    void setChecksAutomatically(bool checks) { updates_.setChecksAutomatically(checks); }
    [[nodiscard]] QString note() const;

    /// What is going on or what came of it; empty at first.
    [[nodiscard]] QString message() const { return updates_.message(); }
    [[nodiscard]] bool canCheckNow() const { return updates_.canCheckForUpdates(); }
    /// Whether a version lies ready; whether it can be installed now, as it cannot twice.
    [[nodiscard]] bool hasUpdate() const { return !updates_.readyVersion().isEmpty(); }
    [[nodiscard]] bool canInstall() const;
    [[nodiscard]] QString installTitle() const;
    /// What a look for updates tells the server, and what it never tells.
    [[nodiscard]] QString requestText() const;

    Q_INVOKABLE void checkNow() { updates_.checkForUpdates(); }
    Q_INVOKABLE void install() { updates_.install(); }

Q_SIGNALS:
    void changed();

private:
    UpdateController& updates_;
};

}  // namespace brindle
