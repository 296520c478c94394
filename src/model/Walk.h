#pragma once

#include "model/PathSet.h"
#include "model/UnixTime.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <span>
#include <string>
#include <vector>

// The values that pass between a walk of a location and whoever asked for it. Relative paths are the
// components below the location's root joined by "/", byte for byte as the file system has them.

namespace brindle {

/// Which paths of a location a walk leaves out. Matched as whole relative paths.
struct ScanRules {
    PathSet excludedPaths;   // not entered; nothing below is counted anywhere
    PathSet uncountedPaths;  // walked for their allocated size only
    PathSet trashPaths;      // those of uncountedPaths that are trash folders

    bool operator==(const ScanRules&) const = default;
};

/// One counted regular file.
struct ScanEntry {
    std::string relativePath;
    std::int64_t size = 0;  // logical bytes
    UnixTime created = 0;

    bool operator==(const ScanEntry&) const = default;
};

/// A folder (or an entry without status) that a walk could not read.
struct UnreadableFolder {
    std::string relativePath;
    bool isPermission = false;  // refused, rather than failed otherwise

    auto operator<=>(const UnreadableFolder&) const = default;
};

/// What a walk saw. Byte counts are exact sums.
struct ScanReport {
    std::int64_t filesSeen = 0;       // counted regular files
    std::int64_t totalBytes = 0;      // their logical sizes
    std::int64_t allocatedBytes = 0;  // on disk, uncounted trees included, each hard-linked inode once
    std::int64_t trashBytes = 0;      // the part of allocatedBytes in trash folders
    std::int64_t cloudOnlyBytes = 0;  // logical sizes of files whose contents are not on this disk
    std::vector<UnreadableFolder> unreadable;
    std::vector<std::string> cloudOnlyFolders;  // not entered; sorted
    std::vector<std::string> uncounted;         // those of the rules' uncountedPaths that are there

    bool operator==(const ScanReport&) const = default;
};

struct ScanProgress {
    std::int64_t filesSeen = 0;
    std::int64_t bytesSeen = 0;
    double elapsed = 0;  // seconds since the walk began

    bool operator==(const ScanProgress&) const = default;
};

/// Why a location could not be walked at all.
class ScanError : public std::exception {
public:
    enum class Reason { missing, accessDenied };

    explicit ScanError(Reason why) : reason(why) {}
    [[nodiscard]] const char* what() const noexcept override {
        return reason == Reason::missing ? "The folder isn't there." : "The folder can't be read.";
    }

    Reason reason;
};

/// The most entries that a walk hands on at once.
inline constexpr std::size_t scanBatchLimit = 2000;

/// Takes a batch of entries, valid only during the call. What it throws ends the walk.
using EntrySink = std::function<void(std::span<const ScanEntry>)>;

using ProgressSink = std::function<void(const ScanProgress&)>;

/// Walks one location and hands every counted file to the sink, each once, ascending by the bytes of their
/// paths. Throws ScanError, Cancelled, or what the
/// sink throws.
using Walk = std::function<ScanReport(const EntrySink&)>;

}  // namespace brindle
