#pragma once

#include "model/Cancellation.h"
#include "model/Walk.h"
#include "platform/TreeReader.h"

#include <exception>
#include <string>

namespace brindle {

/// Whether the error, or one nested in it, is a refusal of access.
[[nodiscard]] bool isPermissionError(const std::exception& error);

/// Seconds on a clock that is never set.
[[nodiscard]] double steadySeconds();

/// Measures locations. Keeps nothing between walks.
class FolderScanner {
public:
    explicit FolderScanner(const TreeSource& trees, Clock clock = steadySeconds)
        : trees_(trees), clock_(std::move(clock)) {}

    /// Walks one location depth first and hands every counted regular file to `sink`.
    /// Order:    entries ascend by the bytes of their relative paths.
    /// Batches:  1 to 2,000 entries, valid only during the call. What was handed over before a failure stays
    ///           so: it is the caller's to discard.
    /// Progress: looked at every 256 files, reported at most four times a second and once at the end.
    /// Thread:   the caller's, whose disk reads give way to others meanwhile. `cancel` may be set from any
    ///           thread and is read every 512 entries and at the end.
    /// Throws:   ScanError when the root cannot be walked, or is not the same folder at the end; Cancelled;
    ///           what the sinks throw. An unreadable folder is no error: it is listed in the report.
    [[nodiscard]] ScanReport scan(const std::string& root, const ScanRules& rules,
                                  const CancellationFlag& cancel, const ProgressSink& progress,
                                  const EntrySink& sink) const;

private:
    const TreeSource& trees_;
    Clock clock_;
};

}  // namespace brindle
