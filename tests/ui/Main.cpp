#include "ui/DesktopApplication.h"

#include <QString>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

namespace {

/// Layouts that give up leave texts over each other, if only at some widths.
void failWhereLayoutsGiveUp(QtMsgType, const QMessageLogContext& context, const QString& message) {
    std::cerr << message.toStdString() << '\n';
    if (message.contains("Polish loop")) ADD_FAILURE() << context.file << ": " << message.toStdString();
}

}  // namespace

int main(int argc, char** argv) {
    // Before the application: it looks at once.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_QUICK_BACKEND", "software", 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    qInstallMessageHandler(failWhereLayoutsGiveUp);
    brindle::DesktopApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
