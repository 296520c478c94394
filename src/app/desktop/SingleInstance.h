#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <chrono>

namespace brindle {

/// Sees to it that a user's session has one window: the program that owns a name on the session bus. A later
/// start asks that program, through the interface that desktops use for this, to show itself.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Start {
        first,      // this program goes on; also when there is no bus to ask
        elsewhere,  // another one runs, and was asked to show its window
        noAnswer,   // another one runs and does not answer
    };

    explicit SingleInstance(QDBusConnection sessionBus);
    /// Gives the name back.
    ~SingleInstance() override;

    /// Waits, for `patience` at most, for the answer of another program; one that is quitting is waited for,
    /// so that a start just after a quit succeeds. `activationToken`: what the launcher gave this start to
    /// raise a window with, or nothing. `action`: what the other program is to do instead of showing its
    /// window, as ActivateAction() takes it, or nothing.
    [[nodiscard]] Start begin(const QString& activationToken, const QString& action = {},
                              std::chrono::milliseconds patience = std::chrono::seconds(15));

    /// From here on a later start waits for the end of this one.
    void quit();

public Q_SLOTS:
    /// Called over the bus.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    /// "check-now", "mini-window" or "quit", called over the bus by the desktop entry's actions.
    Q_SCRIPTABLE void ActivateAction(const QString& action, const QVariantList& parameters,
                                     const QVariantMap& platformData);

Q_SIGNALS:
    /// A later start, or the desktop, wants the window. The token may be empty.
    void showWindowRequested(const QString& activationToken);
    void actionRequested(const QString& action, const QString& activationToken);

private:
    [[nodiscard]] bool takeName();

    QDBusConnection bus_;
    bool isFirst_ = false;
};

}  // namespace brindle
