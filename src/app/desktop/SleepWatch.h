#pragma once

#include <QDBusConnection>
#include <QObject>

namespace brindle {

/// Hears from the login manager when the computer wakes. A login manager that starts later, or again, is
/// heard; where there is none nobody tells, and a wake goes unnoticed.
class SleepWatch : public QObject {
    Q_OBJECT

public:
    explicit SleepWatch(QDBusConnection systemBus);

Q_SIGNALS:
    void didWake();

private Q_SLOTS:
    void preparingForSleep(bool isBefore);
};

}  // namespace brindle
