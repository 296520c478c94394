#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"
#include "cli/PeriodOptions.h"

#include <string>

namespace brindle {

struct ExportOptions {
    PeriodOptions period;
    std::string output;    // "-": standard output; empty: the suggested name in the folder of statements
    std::string location;  // its path or its name; empty: all
};

/// `brindle export`: writes a storage statement.
[[nodiscard]] ExitCode runExport(const Context& context, const ExportOptions& options);

}  // namespace brindle
