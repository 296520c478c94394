#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace brindle {

/// The desktop's portal, which tells programs how the user wants them to look.
class AppearancePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    using SettingsBySpace = QMap<QString, QVariantMap>;

    SettingsBySpace settings;

    explicit AppearancePortal(const QDBusConnection& bus) : bus_(bus) {
        qDBusRegisterMetaType<SettingsBySpace>();
        bus_.registerObject("/org/freedesktop/portal/desktop", this,
                            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus_.registerService("org.freedesktop.portal.Desktop");
    }
    ~AppearancePortal() override {
        bus_.unregisterService("org.freedesktop.portal.Desktop");
        bus_.unregisterObject("/org/freedesktop/portal/desktop");
    }

    void set(const QString& space, const QString& key, const QVariant& value) {
        settings[space][key] = value;
        Q_EMIT SettingChanged(space, key, QDBusVariant(value));
    }

public Q_SLOTS:
    [[nodiscard]] brindle::AppearancePortal::SettingsBySpace ReadAll(const QStringList& spaces) const {
        SettingsBySpace asked;
        for (const QString& space : spaces)
            if (settings.contains(space)) asked[space] = settings[space];
        return asked;
    }

Q_SIGNALS:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection bus_;
};

}  // namespace brindle
