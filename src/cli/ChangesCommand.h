#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"
#include "cli/PeriodOptions.h"

#include <cstddef>
#include <optional>
#include <string>

namespace brindle {

struct ChangesOptions {
    PeriodOptions period;
    std::string folder;       // only what lies in it
    std::string search;       // only what has it in its name or in that of a folder
    bool isAdded = false;     // only what was added or grew
    bool isFreed = false;     // only what shrank or went
    bool isByFolder = false;  // folder by folder, or
    bool isFileList = false;  // in one list, as also without either
    std::string sort;         // "largest", "newest", "name"; empty: largest
    std::optional<std::size_t>
        limit;  // rows; 0: all; absent: as many as a person reads, or all for a program
    std::size_t page = 1;
    bool asCSV = false;
};

/// `brindle changes`: what checks recorded on a day or in a period.
[[nodiscard]] ExitCode runChanges(const Context& context, const ChangesOptions& options);

}  // namespace brindle
