#include "app/desktop/Notices.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace brindle {
namespace {

constexpr auto noticesService = "org.freedesktop.Notifications";
constexpr auto noticesPath = "/org/freedesktop/Notifications";
constexpr int timeOfTheDesktop = -1;

}  // namespace

Notices::Notices(QDBusConnection sessionBus) : bus_(std::move(sessionBus)) {
    bus_.connect(noticesService, noticesPath, noticesService, "ActionInvoked", this,
                 SLOT(actionInvoked(uint, QString)));
    bus_.connect(noticesService, noticesPath, noticesService, "ActivationToken", this,
                 SLOT(activationTokenGiven(uint, QString)));
}

void Notices::show(const std::string& title, const std::string& text, std::function<void()> lead) {
    // A call over no bus would never be answered.
    if (!bus_.isConnected()) return;
    lead_ = std::move(lead);
    auto message = QDBusMessage::createMethodCall(noticesService, noticesPath, noticesService, "Notify");
    const QVariantMap hints{{"desktop-entry", "org.brindle.brindle"}};
    // The text is markup to the desktop, the title is not. "default" is the action of the notice itself.
    message << "Brindle" << shown_ << "org.brindle.brindle" << QString::fromStdString(title)
            << QString::fromStdString(text).toHtmlEscaped() << QStringList{"default", ""} << hints
            << timeOfTheDesktop;
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<uint> reply = *answer;
        if (reply.isValid()) shown_ = reply.value();
    });
}

void Notices::actionInvoked(uint notice, const QString&) {
    if (notice != shown_) return;
    if (lead_) lead_();
    Q_EMIT chosen(std::exchange(activationToken_, {}));
}

/// Comes before the action for which it may be used.
void Notices::activationTokenGiven(uint notice, const QString& token) {
    if (notice == shown_) activationToken_ = token;
}

}  // namespace brindle
