#include "ui/windows/QmlModules.h"

#include <QGuiApplication>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Before the application: it looks at once.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_QUICK_BACKEND", "software", 1);
    QGuiApplication application(argc, argv);
    brindle::registerQmlModules();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
