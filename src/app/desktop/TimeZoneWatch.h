#pragma once

#include <QDBusConnection>
#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

namespace brindle {

/// Notices when the system's time zone is set, by the service for that or by hand, and sees to it that
/// calendars made from then on are of that zone.
class TimeZoneWatch : public QObject {
    Q_OBJECT

public:
    /// `zoneFile` is where the system keeps the rules of its zone, or a link to them.
    explicit TimeZoneWatch(QDBusConnection systemBus, const QString& zoneFile = "/etc/localtime");

    /// Looks at once.
    void look();

Q_SIGNALS:
    void timeZoneChanged();

private Q_SLOTS:
    void propertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated);

private:
    QString zoneFile_;
    QFileSystemWatcher files_;
    QTimer settling_;
};

}  // namespace brindle
