#include "platform/MountMonitor.h"

#include <cerrno>
#include <libmount/libmount.h>
#include <system_error>

namespace brindle {
namespace {

void check(int result) {
    if (result < 0) throw std::system_error(-result, std::generic_category());
}

}  // namespace

void MountMonitor::Release::operator()(libmnt_monitor* monitor) const {
    mnt_unref_monitor(monitor);
}

MountMonitor::MountMonitor() : monitor_(mnt_new_monitor()) {
    if (!monitor_) throw std::system_error(ENOMEM, std::generic_category());
    check(mnt_monitor_enable_kernel(monitor_.get(), 1));
    descriptor_ = mnt_monitor_get_fd(monitor_.get());
    check(descriptor_);
}

void MountMonitor::clear() {
    check(mnt_monitor_event_cleanup(monitor_.get()));
}

}  // namespace brindle
