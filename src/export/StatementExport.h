#pragma once

#include "export/ExportPlan.h"
#include "model/Cancellation.h"
#include "platform/OutputFile.h"

#include <functional>
#include <memory>

namespace brindle {

/// Told how many rows are written, every few hundred of them, in the thread that writes.
using ExportProgress = std::function<void(std::int64_t rows)>;

/// Writes the plan's statement to `file`, in the caller's thread: the measured changes of its days and scope
/// in the order of the history, then the estimated ones. Gives the number of rows, which is another than the
/// plan's when a check was recorded since. `snapshot` tells the locations, `calendar` the time zone.
/// Remembers nothing in the history. Throws Cancelled once `cancel` is set, the source's error, or
/// std::system_error from the file; then nothing is left of the statement.
std::int64_t exportStatement(const ExportPlan& plan, std::unique_ptr<OutputFile> file, HistorySource& source,
                             const HistorySnapshot& snapshot, const Calendar& calendar,
                             const CancellationFlag& cancel, const ExportProgress& progress);

/// The sentence for a statement that failed, with the error's own words.
[[nodiscard]] std::string exportFailure(const std::string& description);

}  // namespace brindle
