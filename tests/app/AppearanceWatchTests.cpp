#include "app/AppearancePortal.h"
#include "app/PrivateBus.h"
#include "app/desktop/AppearanceWatch.h"

#include <gtest/gtest.h>
#include <optional>

namespace brindle {
namespace {

constexpr const char* shared = "org.freedesktop.appearance";
constexpr const char* gnomeAccess = "org.gnome.desktop.a11y.interface";
constexpr const char* gnomeInterface = "org.gnome.desktop.interface";

TEST(AppearanceWatch, FollowsEveryKeyThatTellsHowTheUserWantsPrograms) {
    PrivateBus bus;
    AppearancePortal portal(bus.connect());
    portal.settings[shared]["color-scheme"] = 1U;
    AppearanceWatch watch(bus.connect());
    EXPECT_EQ(watch.appearance(), SystemAppearance{}) << "nothing is known before the portal has answered";

    const auto becomes = [&](SystemAppearance expected) {
        return eventually([&] { return watch.appearance() == expected; });
    };
    EXPECT_TRUE(becomes({.prefersDark = true}));
    portal.set(shared, "color-scheme", 2U);
    EXPECT_TRUE(becomes({.prefersDark = false}));
    portal.set(shared, "contrast", 1U);
    EXPECT_TRUE(becomes({.prefersDark = false, .isContrastIncreased = true}));
    portal.set(shared, "contrast", 0U);
    EXPECT_TRUE(becomes({.prefersDark = false}));
    portal.set(gnomeAccess, "high-contrast", true);
    EXPECT_TRUE(becomes({.prefersDark = false, .isContrastIncreased = true}));
    portal.set(gnomeAccess, "high-contrast", false);
    portal.set(gnomeInterface, "enable-animations", false);
    EXPECT_TRUE(becomes({.prefersDark = false, .isMotionReduced = true}));
    portal.set(gnomeInterface, "enable-animations", true);
    portal.set(shared, "reduced-motion", 1U);
    portal.set(shared, "color-scheme", QVariant::fromValue(QDBusVariant(1U)));  // wrapped twice
    EXPECT_TRUE(becomes({.prefersDark = true, .isMotionReduced = true}));
}

TEST(AppearanceWatch, IsToldOnceOfEachChangeAndOfNothingElse) {
    PrivateBus bus;
    AppearancePortal portal(bus.connect());
    portal.settings[shared]["color-scheme"] = 2U;
    AppearanceWatch watch(bus.connect());
    int told = 0;
    QObject::connect(&watch, &AppearanceWatch::appearanceChanged, [&] { ++told; });
    EXPECT_TRUE(eventually([&] { return told == 1; }));
    portal.set("org.gnome.desktop.interface", "cursor-size", 32);
    portal.set(shared, "color-scheme", 1U);
    portal.set(shared, "color-scheme", 1U);
    portal.set(shared, "contrast", 1U);
    EXPECT_TRUE(eventually([&] { return watch.appearance().isContrastIncreased; }));
    EXPECT_EQ(told, 3);
}

TEST(AppearanceWatch, APortalThatComesLaterIsAskedThen) {
    PrivateBus bus;
    AppearanceWatch watch(bus.connect());
    std::optional<AppearancePortal> portal;
    const QDBusConnection connection = bus.connect();
    for (const bool isDark : {true, false}) {  // it may also be started anew
        portal.emplace(connection);
        portal->set(shared, "color-scheme", isDark ? 1U : 2U);
        EXPECT_TRUE(eventually([&] { return watch.appearance().prefersDark == isDark; }));
        portal.reset();
    }
}

TEST(AppearanceWatch, WithoutABusNothingIsKnown) {
    EXPECT_EQ(AppearanceWatch(QDBusConnection("no bus")).appearance(), SystemAppearance{});
}

}  // namespace
}  // namespace brindle
