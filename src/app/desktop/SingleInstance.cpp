#include "app/desktop/SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QThread>

namespace brindle {
namespace {

constexpr auto serviceName = "org.brindle.brindle";
constexpr auto objectPath = "/org/brindle/brindle";
constexpr auto interfaceName = "org.freedesktop.Application";
// The names of one token under Wayland and under X11.
constexpr auto waylandToken = "activation-token";
constexpr auto x11Token = "desktop-startup-id";

constexpr std::chrono::milliseconds betweenTries{50};

QDBusMessage request(const QString& token, const QString& action) {
    QVariantMap platformData;
    if (!token.isEmpty()) platformData = {{waylandToken, token}, {x11Token, token}};
    const char* const method = action.isEmpty() ? "Activate" : "ActivateAction";
    auto message = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, method);
    // The program is there or it is not: the bus is not to start it.
    message.setAutoStartService(false);
    if (!action.isEmpty()) message << action << QVariantList();
    message << platformData;
    return message;
}

QString tokenIn(const QVariantMap& platformData) {
    const QString token = platformData.value(waylandToken).toString();
    return token.isEmpty() ? platformData.value(x11Token).toString() : token;
}

}  // namespace

SingleInstance::SingleInstance(QDBusConnection sessionBus) : bus_(std::move(sessionBus)) {}

SingleInstance::~SingleInstance() {
    quit();
    if (isFirst_) bus_.unregisterService(serviceName);
}

SingleInstance::Start SingleInstance::begin(const QString& activationToken, const QString& action,
                                            std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience);
    while (!takeName()) {
        const auto remaining = static_cast<int>(deadline.remainingTime());
        if (bus_.call(request(activationToken, action), QDBus::Block, remaining).type() ==
            QDBusMessage::ReplyMessage)
            return Start::elsewhere;
        if (deadline.hasExpired()) return Start::noAnswer;
        QThread::msleep(betweenTries.count());
    }
    return Start::first;
}

void SingleInstance::quit() {
    if (isFirst_) bus_.unregisterObject(objectPath);
}

void SingleInstance::Activate(const QVariantMap& platformData) {
    Q_EMIT showWindowRequested(tokenIn(platformData));
}

void SingleInstance::ActivateAction(const QString& action, const QVariantList&,
                                    const QVariantMap& platformData) {
    Q_EMIT actionRequested(action, tokenIn(platformData));
}

/// Of two programs that start at once the bus lets one have the name. True also when no bus is there.
bool SingleInstance::takeName() {
    if (!bus_.isConnected()) return true;
    // Whoever sees the name finds the object.
    bus_.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
    const auto reply =
        bus_.interface()->registerService(serviceName, QDBusConnectionInterface::DontQueueService);
    if (!reply.isValid()) return true;
    isFirst_ = reply.value() == QDBusConnectionInterface::ServiceRegistered;
    if (!isFirst_) bus_.unregisterObject(objectPath);
    return isFirst_;
}

}  // namespace brindle
