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
    QProcess opener;
    opener.setProgram(opener_);
    opener.setArguments({QString::fromLatin1(fileURI(folder.native()))});
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    opener.setChildProcessModifier(hearStopSignals);
    if (!opener.startDetached()) Q_EMIT failed(path);
}

QByteArray fileURI(const std::string& path) {
    return "file://" + QByteArray::fromStdString(path).toPercentEncoding("/");
}

}  // namespace brindle
