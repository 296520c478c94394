#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantList>
#include <gtest/gtest.h>

namespace brindle {

constexpr auto loginManager = "org.freedesktop.login1";

/// Lets the mock login manager on this bus tell that the computer is about to sleep, and that it woke.
inline void sleepAndWake(QDBusConnection bus) {
    for (const bool isBefore : {true, false}) {
        auto emission = QDBusMessage::createMethodCall(loginManager, "/org/freedesktop/login1",
                                                       "org.freedesktop.DBus.Mock", "EmitSignal");
        emission << "org.freedesktop.login1.Manager"
                 << "PrepareForSleep"
                 << "b" << QVariantList{isBefore};
        ASSERT_EQ(bus.call(emission).type(), QDBusMessage::ReplyMessage);
    }
}

}  // namespace brindle
