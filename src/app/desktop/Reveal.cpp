#include "app/desktop/Reveal.h"

#include "platform/Interruption.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QProcess>
#include <QStringList>
#include <filesystem>

namespace brindle {

Reveal::Reveal(QDBusConnection sessionBus, const QString& opener)
    : bus_(std::move(sessionBus)), opener_(opener) {}

void Reveal::show(const std::string& path) {
    // A call over no bus would never be answered.
    if (!bus_.isConnected()) return open(path);
    auto message =
        QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                       "org.freedesktop.FileManager1", "ShowItems");
    message << QStringList{QString::fromLatin1(fileURI(path))} << QString();
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, path, answer] {
        answer->deleteLater();
        if (answer->isError()) open(path);
    });
}

void Reveal::open(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::path item(path);
    const auto folder = std::filesystem::is_directory(item, ignored) ? item : item.parent_path();
    // Without an owner, which would take the file manager along when it goes.
    auto* opener = new QProcess;
    opener->setProgram(opener_);
    opener->setArguments({QString::fromLatin1(fileURI(folder.native()))});
    opener->setStandardInputFile(QProcess::nullDevice());
    opener->setStandardOutputFile(QProcess::nullDevice());
    opener->setStandardErrorFile(QProcess::nullDevice());
    opener->setChildProcessModifier(becomeIndependent);
    connect(opener, &QProcess::finished, opener, &QObject::deleteLater);
    connect(opener, &QProcess::errorOccurred, opener, &QObject::deleteLater);
    connect(opener, &QProcess::finished, this, [this, path](int exitCode, QProcess::ExitStatus status) {
        if (status == QProcess::NormalExit && exitCode != 0) Q_EMIT failed(path);
    });
    connect(opener, &QProcess::errorOccurred, this, [this, path] { Q_EMIT failed(path); });
    opener->start();
}

QByteArray fileURI(const std::string& path) {
    return "file://" + QByteArray::fromStdString(path).toPercentEncoding("/");
}

}  // namespace brindle
