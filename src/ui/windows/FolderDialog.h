#pragma once

#include <QFileDialog>
#include <QObject>
#include <QPointer>
#include <string>

namespace brindle {

/// Asks with the system's own dialog for a folder to track, beginning at home. Nothing waits for it.
/// Thread: main.
class FolderDialog : public QObject {
    Q_OBJECT

public:
    explicit FolderDialog(QObject* parent = nullptr) : QObject(parent) {}
    ~FolderDialog() override;

    /// In front of the window that has the keyboard, in the place of one that is open already.
    void open();

Q_SIGNALS:
    /// An absolute path. Nothing is sent when the user chooses none.
    void chosen(const std::string& path);

private:
    void close(int result);

    QPointer<QFileDialog> dialog_;  // null while none is open
};

}  // namespace brindle
