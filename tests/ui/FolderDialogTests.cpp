#include "app/EventLoop.h"
#include "support/TempFolder.h"
#include "ui/windows/FolderDialog.h"

#include <QApplication>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;

std::vector<QFileDialog*> openDialogs() {
    std::vector<QFileDialog*> dialogs;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* dialog = qobject_cast<QFileDialog*>(widget); dialog != nullptr && dialog->isVisible())
            dialogs.push_back(dialog);
    return dialogs;
}

TEST(FolderDialog, AsksForOneFolderAndTellsItUnlessItIsClosed) {
    const TempFolder folder;
    std::vector<std::string> chosen;
    FolderDialog dialog;
    QObject::connect(&dialog, &FolderDialog::chosen,
                     [&](const std::string& path) { chosen.push_back(path); });
    dialog.open();
    dialog.open();
    ASSERT_EQ(openDialogs().size(), 1U);
    EXPECT_EQ(openDialogs().front()->windowTitle(), "Choose a folder to track.");
    EXPECT_EQ(openDialogs().front()->fileMode(), QFileDialog::Directory);
    openDialogs().front()->close();
    ASSERT_TRUE(runUntil([] { return openDialogs().empty(); }));
    EXPECT_TRUE(chosen.empty());

    dialog.open();
    ASSERT_EQ(openDialogs().size(), 1U);
    openDialogs().front()->setDirectory(QString::fromStdString(folder.path()));
    openDialogs().front()->selectFile(QString::fromStdString(folder.path()));
    QMetaObject::invokeMethod(openDialogs().front(), "accept");
    ASSERT_TRUE(runUntil([] { return openDialogs().empty(); }));
    EXPECT_THAT(chosen, ElementsAre(folder.path().string()));
}

}  // namespace
}  // namespace brindle
