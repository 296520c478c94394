#pragma once

#include <memory>

struct libmnt_monitor;

namespace brindle {

/// Notices that something was mounted or unmounted in the process's mount table, or mounted differently.
/// Throws: std::system_error.
class MountMonitor {
public:
    MountMonitor();

    /// Readable after a change, until clear().
    [[nodiscard]] int descriptor() const { return descriptor_; }
    void clear();

private:
    struct Release {
        void operator()(libmnt_monitor* monitor) const;
    };

    std::unique_ptr<libmnt_monitor, Release> monitor_;
    int descriptor_ = -1;  // the monitor's
};

}  // namespace brindle
