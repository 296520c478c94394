#include "app/PrivateBus.h"
#include "app/TrayWatcher.h"
#include "app/desktop/TrayHost.h"

#include <gtest/gtest.h>
#include <memory>

namespace brindle {
namespace {

TEST(TrayHost, IsThereOnceSomebodyShowsTheItemsAndAsLong) {
    PrivateBus bus;
    TrayHost host(bus.connect());
    EXPECT_FALSE(host.isThere());
    auto watcher = std::make_unique<TrayWatcher>(bus.connect());
    watcher->setHost(true);
    EXPECT_TRUE(eventually([&] { return host.isThere(); }));
    watcher->setHost(false);
    EXPECT_TRUE(eventually([&] { return !host.isThere(); }));

    watcher->setHost(true);
    EXPECT_TRUE(eventually([&] { return host.isThere(); }));
    TrayHost later(bus.connect());
    EXPECT_TRUE(eventually([&] { return later.isThere(); })) << "there before anybody asked";
    watcher.reset();
    EXPECT_TRUE(eventually([&] { return !host.isThere() && !later.isThere(); })) << "it crashed";
}

TEST(TrayHost, IsNotThereWithoutABus) {
    EXPECT_FALSE(TrayHost(QDBusConnection("no bus")).isThere());
}

}  // namespace
}  // namespace brindle
