#include <QGuiApplication>
#include <QtPlugin>
#include <cstdlib>
#include <gtest/gtest.h>

Q_IMPORT_PLUGIN(Brindle_MarksPlugin)
Q_IMPORT_PLUGIN(Brindle_PartsPlugin)
Q_IMPORT_PLUGIN(Brindle_ThemePlugin)

int main(int argc, char** argv) {
    // Before the application: it looks at once.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_QUICK_BACKEND", "software", 1);
    QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
