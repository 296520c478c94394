#include "ui/windows/SaveDialog.h"

#include "model/Translation.h"

#include <QFile>
#include <QGuiApplication>
#include <QWindow>

namespace brindle {

SaveDialog::SaveDialog(ExportModel& exporter, QObject* parent) : QObject(parent), exporter_(exporter) {
    connect(&exporter, &ExportModel::destinationRequested, this, &SaveDialog::open);
}

SaveDialog::~SaveDialog() {
    delete dialog_;
}

void SaveDialog::open(const std::string& suggestedPath) {
    delete dialog_;
    dialog_ = new QFileDialog;
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->setWindowTitle(translated("Save the statement"));
    dialog_->setAcceptMode(QFileDialog::AcceptSave);
    dialog_->setNameFilter(QString(translated("Storage statements")) + " (*.csv)");
    dialog_->setDefaultSuffix("csv");
    dialog_->selectFile(QFile::decodeName(QByteArray::fromStdString(suggestedPath)));
    connect(dialog_, &QFileDialog::finished, this, &SaveDialog::close);
    // In front of the window that it belongs to, which waits for it.
    QWindow* const owner = QGuiApplication::focusWindow();
    dialog_->winId();
    dialog_->windowHandle()->setTransientParent(owner);
    dialog_->open();
}

void SaveDialog::close(int result) {
    const QStringList files = dialog_->selectedFiles();
    if (result == QFileDialog::Accepted && !files.isEmpty())
        exporter_.write(QFile::encodeName(files.front()).toStdString());
    else
        exporter_.cancelChoosing();
}

}  // namespace brindle
