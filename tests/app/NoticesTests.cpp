#include "app/NoticeBoard.h"
#include "app/PrivateBus.h"
#include "app/desktop/Notices.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(Notices, AreShownOneInThePlaceOfAnotherAndTellWhenTheyAreChosen) {
    PrivateBus bus;
    NoticeBoard desktop(bus.connect());
    Notices notices(bus.connect());
    QStringList chosen;
    QObject::connect(&notices, &Notices::chosen, [&](const QString& token) { chosen += "<" + token + ">"; });

    notices.show("Brindle", "A < B & C");
    EXPECT_TRUE(eventually([&] { return desktop.notices.size() == 1; }));
    // The answer to the first comes to its program after it went out.
    EXPECT_TRUE(eventually([&] {
        desktop.choose();
        return !chosen.isEmpty();
    }));
    int led = 0;
    notices.show("Brindle", "again", [&] { ++led; });
    EXPECT_TRUE(eventually([&] { return desktop.notices.size() == 2; }));
    EXPECT_EQ(desktop.notices, (QStringList{"new: Brindle: A &lt; B &amp; C", "again: Brindle: again"}));

    desktop.tell("ActivationToken", 7, "of another program");
    desktop.tell("ActionInvoked", 7, "default");
    desktop.choose();
    desktop.tell("ActivationToken", NoticeBoard::number, "token");
    desktop.choose();
    EXPECT_TRUE(eventually([&] { return chosen.contains("<token>"); }));
    EXPECT_FALSE(chosen.contains("<of another program>"));
    EXPECT_GT(led, 0);
}

TEST(Notices, WithoutADesktopNobodyIsTold) {
    Notices notices(QDBusConnection("no bus"));
    notices.show("Brindle", "text");
}

}  // namespace
}  // namespace brindle
