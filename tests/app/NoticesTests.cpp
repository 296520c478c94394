#include "app/PrivateBus.h"
#include "app/desktop/Notices.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";

/// Takes notices and numbers them, unless one takes another's place.
class Desktop : public QDBusVirtualObject {
public:
    explicit Desktop(QDBusConnection bus) : bus_(std::move(bus)) {
        bus_.registerVirtualObject(path, this);
        bus_.registerService(service);
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() != "Notify" || message.signature() != "susssasa{sv}i") return false;
        const auto arguments = message.arguments();
        const uint replaced = arguments[1].toUInt();
        notices.push_back((replaced == 0 ? "new: " : "again: ") + arguments[3].toString() + ": " +
                          arguments[4].toString());
        return bus.send(message.createReply(replaced == 0 ? 41U : replaced));
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    void tell(const char* what, uint notice, const char* detail) {
        auto message = QDBusMessage::createSignal(path, service, what);
        message << notice << detail;
        bus_.send(message);
    }

    QStringList notices;

private:
    QDBusConnection bus_;
};

TEST(Notices, AreShownOneInThePlaceOfAnotherAndTellWhenTheyAreChosen) {
    PrivateBus bus;
    Desktop desktop(bus.connect());
    Notices notices(bus.connect());
    QStringList chosen;
    QObject::connect(&notices, &Notices::chosen, [&](const QString& token) { chosen += "<" + token + ">"; });

    notices.show("Brindle", "A < B & C");
    EXPECT_TRUE(eventually([&] { return desktop.notices.size() == 1; }));
    // The answer to the first comes to its program after it went out.
    EXPECT_TRUE(eventually([&] {
        desktop.tell("ActionInvoked", 41, "default");
        return !chosen.isEmpty();
    }));
    notices.show("Brindle", "again");
    EXPECT_TRUE(eventually([&] { return desktop.notices.size() == 2; }));
    EXPECT_EQ(desktop.notices, (QStringList{"new: Brindle: A &lt; B &amp; C", "again: Brindle: again"}));

    desktop.tell("ActivationToken", 7, "of another program");
    desktop.tell("ActionInvoked", 7, "default");
    desktop.tell("ActionInvoked", 41, "default");
    desktop.tell("ActivationToken", 41, "token");
    desktop.tell("ActionInvoked", 41, "default");
    EXPECT_TRUE(eventually([&] { return chosen.contains("<token>"); }));
    EXPECT_FALSE(chosen.contains("<of another program>"));
}

TEST(Notices, WithoutADesktopNobodyIsTold) {
    Notices notices(QDBusConnection("no bus"));
    notices.show("Brindle", "text");
}

}  // namespace
}  // namespace brindle
