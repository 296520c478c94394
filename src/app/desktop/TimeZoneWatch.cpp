#include "app/desktop/TimeZoneWatch.h"

#include "model/TimeZone.h"

#include <QFileInfo>
#include <chrono>

namespace brindle {
namespace {

// A file that is being replaced changes several times.
constexpr std::chrono::milliseconds settlingTime{200};

}  // namespace

TimeZoneWatch::TimeZoneWatch(QDBusConnection systemBus, const QString& zoneFile) : zoneFile_(zoneFile) {
    systemBus.connect("org.freedesktop.timedate1", "/org/freedesktop/timedate1",
                      "org.freedesktop.DBus.Properties", "PropertiesChanged", this,
                      SLOT(propertiesChanged(QString, QVariantMap, QStringList)));

    settling_.setSingleShot(true);
    settling_.setInterval(settlingTime);
    settling_.callOnTimeout(this, &TimeZoneWatch::look);
    const auto changed = [this] {
        if (!settling_.isActive()) settling_.start();
    };
    connect(&files_, &QFileSystemWatcher::directoryChanged, this, changed);
    connect(&files_, &QFileSystemWatcher::fileChanged, this, changed);
    // The folder tells when the file is replaced, the file when it is written to.
    files_.addPath(QFileInfo(zoneFile_).path());
    files_.addPath(zoneFile_);
}

void TimeZoneWatch::look() {
    // What replaced the file is not watched yet.
    files_.removePath(zoneFile_);
    files_.addPath(zoneFile_);
    if (followSystemTimeZone()) Q_EMIT timeZoneChanged();
}

void TimeZoneWatch::propertiesChanged(const QString&, const QVariantMap& changed,
                                      const QStringList& invalidated) {
    if (changed.contains("Timezone") || invalidated.contains("Timezone")) look();
}

}  // namespace brindle
