#pragma once

#include "cli/Output.h"
#include "model/Change.h"

#include <string>

namespace brindle {

/// One change as a line of a list: amount, what happened, and the path below `root` (the location's name or
/// path; null where it is clear).
[[nodiscard]] std::string changeLine(const FileChange& change, const Output& output, const std::string* root);

/// "+1.2 MB added, −3.0 kB freed in 5 files".
[[nodiscard]] std::string totalsText(const ChangeTotals& totals, const Output& output);

}  // namespace brindle
