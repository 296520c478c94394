#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <utility>

namespace brindle {

/// Keeps the list of tray items on a bus, for whoever shows them: nobody until the test says so.
class TrayWatcher : public QDBusVirtualObject {
public:
    explicit TrayWatcher(QDBusConnection bus) : bus_(std::move(bus)) {
        bus_.registerVirtualObject(path, this);
        bus_.registerService(service);
    }
    ~TrayWatcher() override {
        bus_.unregisterService(service);
        bus_.unregisterObject(path);
    }

    void setHost(bool isThere) {
        hasHost_ = isThere;
        bus_.send(QDBusMessage::createSignal(
            path, service, isThere ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered"));
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.arguments() != QVariantList{service, "IsStatusNotifierHostRegistered"}) return false;
        return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost_))));
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

private:
    static constexpr const char* service = "org.kde.StatusNotifierWatcher";
    static constexpr const char* path = "/StatusNotifierWatcher";

    QDBusConnection bus_;
    bool hasHost_ = false;
};

}  // namespace brindle
