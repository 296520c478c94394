#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <string>

namespace brindle {

struct BackupOptions {
    std::string file;
    bool replaces = false;  // a file that is there
};

/// `brindle backup FILE`: writes a copy of the history.
[[nodiscard]] ExitCode runBackup(const Context& context, const BackupOptions& options);

struct RestoreOptions {
    std::string file;
    bool isConfirmed = false;
};

/// `brindle restore FILE`: puts a copy of the history in its place, and keeps the one that was there.
[[nodiscard]] ExitCode runRestore(const Context& context, const RestoreOptions& options);

}  // namespace brindle
