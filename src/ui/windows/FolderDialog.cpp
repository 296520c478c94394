#include "ui/windows/FolderDialog.h"

#include "model/Translation.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QWindow>

namespace brindle {

FolderDialog::~FolderDialog() {
    delete dialog_;
}

void FolderDialog::open() {
    delete dialog_;
    dialog_ = new QFileDialog;
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->setWindowTitle(translated("Choose a folder to track."));
    dialog_->setFileMode(QFileDialog::Directory);
    dialog_->setOption(QFileDialog::ShowDirsOnly);
    dialog_->setDirectory(QDir::homePath());
    connect(dialog_, &QFileDialog::finished, this, &FolderDialog::close);
    // In front of the window that it belongs to, which waits for it.
    QWindow* const owner = QGuiApplication::focusWindow();
    dialog_->winId();
    dialog_->windowHandle()->setTransientParent(owner);
    dialog_->open();
}

void FolderDialog::close(int result) {
    const QStringList folders = dialog_->selectedFiles();
    if (result == QFileDialog::Accepted && !folders.isEmpty())
        Q_EMIT chosen(QFile::encodeName(folders.front()).toStdString());
}

}  // namespace brindle
