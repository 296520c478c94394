#include "app/PackageInstaller.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <chrono>
#include <utility>

namespace brindle {
namespace {

// The answer comes when the user has decided and everything is installed.
constexpr std::chrono::milliseconds longestInstallation = std::chrono::hours(1);

QDBusMessage installationOf(const QString& package) {
    auto call = QDBusMessage::createMethodCall("org.freedesktop.PackageKit", "/org/freedesktop/PackageKit",
                                               "org.freedesktop.PackageKit.Modify", "InstallPackageFiles");
    constexpr uint noWindow = 0;
    const QString usualInteraction("");
    call.setArguments({noWindow, QStringList(package), usualInteraction});
    return call;
}

/// The user said no, or may not: asking them a second time in another way would be rude.
bool isRefusal(const QDBusError& error) {
    return error.name().endsWith(".Cancelled") || error.name().endsWith(".Forbidden");
}

}  // namespace

SystemPackageInstaller::SystemPackageInstaller(QDBusConnection bus, QString opener)
    : bus_(std::move(bus)), opener_(std::move(opener)) {}

void SystemPackageInstaller::install(const std::string& package, Done done) {
    const QString path = QFile::decodeName(package.c_str());
    if (QFile::encodeName(path).toStdString() != package) return done(false);  // no text for other programs

    const auto call = bus_.asyncCall(installationOf(path), static_cast<int>(longestInstallation.count()));
    auto* watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, path, done = std::move(done)] {
        const QDBusPendingReply<> reply = *watcher;
        watcher->deleteLater();
        const bool isTaken = !reply.isError() || isRefusal(reply.error());
        done(isTaken || QProcess::startDetached(opener_, {path}));
    });
}

}  // namespace brindle
