#include "ui/DesktopApplication.h"

#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Before the application: it looks at once.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_QUICK_BACKEND", "software", 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    brindle::DesktopApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
