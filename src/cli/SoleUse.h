#pragma once

#include "checks/RunLock.h"
#include "platform/FileLock.h"
#include "store/HistoryFiles.h"

#include <optional>
#include <string>

namespace brindle {

/// The right to replace the history's file: while it lives, no other program checks, opens the history, or
/// starts a window on it.
class SoleUse {
public:
    /// Makes the data directory if need be. Throws: RunLocked while another program uses the history;
    /// std::system_error.
    explicit SoleUse(const std::string& dataDirectory);

private:
    RunLock run_;
    std::optional<FileLock> window_;
    std::optional<HistoryLease> lease_;
};

}  // namespace brindle
