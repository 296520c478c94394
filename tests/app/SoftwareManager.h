#pragma once

#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

namespace brindle {

/// The session's software manager, answering as the test wants.
class SoftwareManager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PackageKit.Modify")

public:
    QString error;
    QStringList installed;

public Q_SLOTS:
    void InstallPackageFiles(uint window, const QStringList& files, const QString& interaction) {
        EXPECT_EQ(window, 0U);
        EXPECT_EQ(interaction, "");
        if (error.isEmpty()) {
            installed += files;
        } else {
            sendErrorReply(error, "for the test");
        }
    }
};

}  // namespace brindle
