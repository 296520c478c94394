#include "app/desktop/DriveWatch.h"

#include "platform/Mounts.h"

#include <algorithm>
#include <chrono>
#include <system_error>

namespace brindle {
namespace {

// A drive comes with several mounts, and starting a container brings dozens.
constexpr std::chrono::milliseconds settlingTime{500};

bool holdsAnyBeside(const auto& set, const auto& other) {
    return !std::ranges::includes(other, set);
}

}  // namespace

DriveWatch::DriveWatch()
    : isChanged_(monitor_.descriptor(), QSocketNotifier::Read), drives_(currentDrives()) {
    settling_.setSingleShot(true);
    settling_.setInterval(settlingTime);
    settling_.callOnTimeout(this, &DriveWatch::look);
    connect(&isChanged_, &QSocketNotifier::activated, this, [this] {
        // Counted from the first change: where mounts come and go all the time, drives are still told of.
        isChanged_.setEnabled(false);
        settling_.start();
    });
}

void DriveWatch::look() {
    const Drives before = drives_;
    try {
        // What changes from here on is for the next look.
        monitor_.clear();
        drives_ = currentDrives();
    } catch (const std::system_error&) {
        // Too many open files, for instance, and so perhaps only for now.
        settling_.start();
        return;
    }
    isChanged_.setEnabled(true);
    if (holdsAnyBeside(before, drives_)) Q_EMIT unmounted();
    if (holdsAnyBeside(drives_, before)) Q_EMIT mounted();
}

DriveWatch::Drives DriveWatch::currentDrives() {
    Drives drives;
    const MountTable table = MountTable::current();
    for (const Mount& mount : table.mounts())
        if (isDrive(mount)) drives.emplace(mount.id, mount.device, mount.target);
    return drives;
}

}  // namespace brindle
