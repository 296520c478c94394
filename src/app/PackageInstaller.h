#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <string>

namespace brindle {

/// Hands packages to what installs software on this system.
class PackageInstaller {
public:
    /// Whether a program took the package.
    using Done = std::function<void(bool isTaken)>;

    PackageInstaller() = default;
    virtual ~PackageInstaller() = default;
    PackageInstaller(const PackageInstaller&) = delete;
    PackageInstaller& operator=(const PackageInstaller&) = delete;

    /// Returns at once; `done` is called once, on the same thread, or not at all when the installer goes
    /// first.
    virtual void install(const std::string& package, Done done) = 0;
};

/// Asks the session's software manager (PackageKit's interface) to install; where there is none, the package
/// is opened as a file manager would open it. Whoever takes it asks the user for the rights that it needs.
class SystemPackageInstaller final : public QObject, public PackageInstaller {
public:
    /// `opener`: the program that opens files.
    explicit SystemPackageInstaller(QDBusConnection bus = QDBusConnection::sessionBus(),
                                    QString opener = "xdg-open");

    void install(const std::string& package, Done done) override;

private:
    QDBusConnection bus_;
    QString opener_;
};

}  // namespace brindle
