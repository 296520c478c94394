#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <utility>

namespace brindle {

/// A desktop that takes notices and numbers them, unless one takes another's place.
class NoticeBoard : public QDBusVirtualObject {
public:
    static constexpr uint number = 41;  // of the notice

    explicit NoticeBoard(QDBusConnection bus) : bus_(std::move(bus)) {
        bus_.registerVirtualObject(path, this);
        bus_.registerService(service);
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() != "Notify" || message.signature() != "susssasa{sv}i") return false;
        const auto arguments = message.arguments();
        const uint replaced = arguments[1].toUInt();
        notices.push_back((replaced == 0 ? "new: " : "again: ") + arguments[3].toString() + ": " +
                          arguments[4].toString());
        return bus.send(message.createReply(replaced == 0 ? number : replaced));
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    void tell(const char* what, uint notice, const char* detail) {
        auto message = QDBusMessage::createSignal(path, service, what);
        message << notice << detail;
        bus_.send(message);
    }
    /// The user turns to the notice.
    void choose() { tell("ActionInvoked", number, "default"); }

    QStringList notices;  // "new: TITLE: TEXT"

private:
    static constexpr const char* service = "org.freedesktop.Notifications";
    static constexpr const char* path = "/org/freedesktop/Notifications";

    QDBusConnection bus_;
};

}  // namespace brindle
