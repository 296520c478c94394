#pragma once

#include <QDBusConnection>
#include <QObject>
#include <memory>

namespace brindle {

/// What happens around the program. Costs nothing while nothing happens.
///
/// Thread: the one that made it, which runs an event loop.
/// Throws: std::system_error when the kernel grants no timer or no look at the mounts.
class SystemEvents : public QObject {
    Q_OBJECT

public:
    /// A bus that is not connected is no error: what it would have told goes unnoticed.
    explicit SystemEvents(const QDBusConnection& systemBus);
    ~SystemEvents() override;

public Q_SLOTS:
    /// The window system's word that the user turned to the program.
    void becomeActive();

Q_SIGNALS:
    void dayChanged();       // calendars made now tell the new day
    void timeZoneChanged();  // calendars made now are of the new zone
    void becameActive();
    void didWake();    // after dayChanged and timeZoneChanged, if they changed during the sleep
    void mounted();    // one drive or several
    void unmounted();  // likewise

private:
    struct Watches;

    void wake();

    std::unique_ptr<Watches> watches_;
};

}  // namespace brindle
