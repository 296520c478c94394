#pragma once

#include "model/Calendar.h"

#include <string>

namespace CLI {
class App;
}

namespace brindle {

/// Days as they were typed; empty where none was.
struct PeriodOptions {
    std::string day;
    std::string since;
    std::string from;
    std::string to;
};

/// From the first day through the last.
struct Period {
    LocalDay first;
    LocalDay last;
};

/// Registers --day, --since, --from and --to. `options` must live until the command has run.
void addPeriodOptions(CLI::App& command, PeriodOptions& options);

/// The period that the options name: today when there is none of them. Throws: UsageError for options that do
/// not go together, for a first day behind the last one, and for days that are still to come.
[[nodiscard]] Period periodOf(const PeriodOptions& options, const Calendar& calendar, const LocalDay& today);

/// "Saturday, March 7, 2026", or both its ends.
[[nodiscard]] std::string periodLabel(const Period& period, const Calendar& calendar);

}  // namespace brindle
