#pragma once

#include "platform/MountMonitor.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <set>
#include <string>
#include <tuple>

namespace brindle {

/// Notices when a drive is mounted or unmounted. Other mounts, of which there are many, are not told of.
class DriveWatch : public QObject {
    Q_OBJECT

public:
    DriveWatch();

Q_SIGNALS:
    void mounted();
    void unmounted();

private:
    using Drives = std::set<std::tuple<int, dev_t, std::string>>;  // mount, device and target of each

    [[nodiscard]] static Drives currentDrives();
    void look();

    MountMonitor monitor_;
    QSocketNotifier isChanged_;
    QTimer settling_;
    Drives drives_;
};

}  // namespace brindle
