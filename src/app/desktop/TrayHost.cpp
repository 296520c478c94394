#include "app/desktop/TrayHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <utility>

namespace brindle {
namespace {

// Keeps the list of items and of those who show them.
constexpr auto trayService = "org.kde.StatusNotifierWatcher";
constexpr auto trayPath = "/StatusNotifierWatcher";

}  // namespace

TrayHost::TrayHost(QDBusConnection sessionBus) : bus_(std::move(sessionBus)) {
    if (!bus_.isConnected()) return;
    auto* watcher =
        new QDBusServiceWatcher(trayService, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayHost::ask);
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(trayService, trayPath, trayService, signal, this, SLOT(ask()));
    ask();
}

void TrayHost::ask() {
    auto message =
        QDBusMessage::createMethodCall(trayService, trayPath, "org.freedesktop.DBus.Properties", "Get");
    message.setAutoStartService(false);
    message << trayService << "IsStatusNotifierHostRegistered";
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, question = ++questions_] {
        answer->deleteLater();
        if (question != questions_) return;
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        tell(reply.isValid() && reply.value().variant().toBool());
    });
}

void TrayHost::tell(bool isThere) {
    if (std::exchange(isThere_, isThere) != isThere) Q_EMIT changed();
}

}  // namespace brindle
