#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <string>

namespace brindle {

/// Tells the user something outside the window, through the desktop's notifications: one at a time, a later
/// one takes the place of the one before. Where no desktop shows them nobody is told. Nothing here waits.
class Notices : public QObject {
    Q_OBJECT

public:
    explicit Notices(QDBusConnection sessionBus);

    /// Plain text; translated. `lead` is called when the user turns to the notice, before chosen() comes.
    void show(const std::string& title, const std::string& text, std::function<void()> lead = {});

Q_SIGNALS:
    /// The user turned to the notice. The token, with which a window may be raised, may be empty.
    void chosen(const QString& activationToken);

private Q_SLOTS:
    void actionInvoked(uint notice, const QString& action);
    void activationTokenGiven(uint notice, const QString& token);

private:
    QDBusConnection bus_;
    uint shown_ = 0;  // none yet
    std::function<void()> lead_;
    QString activationToken_;
};

}  // namespace brindle
