#include "app/desktop/AppearanceWatch.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QStringList>

namespace brindle {
namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";

// What all desktops share, and where GNOME has kept the same for longer.
constexpr const char* shared = "org.freedesktop.appearance";
constexpr const char* gnomeAccess = "org.gnome.desktop.a11y.interface";
constexpr const char* gnomeInterface = "org.gnome.desktop.interface";

using SettingsBySpace = QMap<QString, QVariantMap>;

// Some portals wrap a value twice.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value;
}

}  // namespace

AppearanceWatch::AppearanceWatch(const QDBusConnection& sessionBus)
    : bus_(sessionBus), portal_(service, sessionBus, QDBusServiceWatcher::WatchForRegistration) {
    bus_.connect(service, path, interface, "SettingChanged", this, SLOT(settingChanged(QDBusMessage)));
    connect(&portal_, &QDBusServiceWatcher::serviceRegistered, this, &AppearanceWatch::readAll);
    readAll();
}

void AppearanceWatch::readAll() {
    if (!bus_.isConnected()) return;
    auto call = QDBusMessage::createMethodCall(service, path, interface, "ReadAll");
    call << QStringList{shared, gnomeAccess, gnomeInterface};
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusMessage reply = answer->reply();
        if (reply.signature() != "a{sa{sv}}") return;
        settings_ = qdbus_cast<SettingsBySpace>(reply.arguments().constFirst());
        update();
    });
}

void AppearanceWatch::settingChanged(const QDBusMessage& signal) {
    if (signal.signature() != "ssv") return;
    const QVariantList values = signal.arguments();
    settings_[values[0].toString()][values[1].toString()] = values[2];
    update();
}

void AppearanceWatch::update() {
    const auto setting = [this](const char* space, const char* key) {
        return unwrapped(settings_.value(space).value(key));
    };
    SystemAppearance now;
    // 1 dark, 2 light, 0 no preference, which desktops show light.
    if (const QVariant scheme = setting(shared, "color-scheme"); scheme.isValid())
        now.prefersDark = scheme.toUInt() == 1;
    now.isContrastIncreased =
        setting(shared, "contrast").toUInt() == 1 || setting(gnomeAccess, "high-contrast").toBool();
    const QVariant animations = setting(gnomeInterface, "enable-animations");
    now.isMotionReduced =
        setting(shared, "reduced-motion").toUInt() == 1 || (animations.isValid() && !animations.toBool());
    if (now == appearance_) return;
    appearance_ = now;
    Q_EMIT appearanceChanged();
}

}  // namespace brindle
