#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <string>

namespace brindle {

/// Shows files in the desktop's file manager. Paths are bytes, as the file system has them. Nothing here
/// waits.
class Reveal : public QObject {
    Q_OBJECT

public:
    /// `opener`: the program that opens a folder where no file manager answers on the bus.
    explicit Reveal(QDBusConnection sessionBus, const QString& opener = "xdg-open");

    /// Shows the folder that holds the file or folder `path`, with that selected. Without a file manager on
    /// the bus the folder alone is opened: `path` itself when that is one.
    void show(const std::string& path);

Q_SIGNALS:
    /// Neither way of showing it works.
    void failed(const std::string& path);

private:
    void open(const std::string& path);

    QDBusConnection bus_;
    QString opener_;
};

/// "file:///home/ann/a%20file", which keeps every byte of an absolute path.
[[nodiscard]] QByteArray fileURI(const std::string& path);

}  // namespace brindle
