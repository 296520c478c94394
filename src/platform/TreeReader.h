#pragma once

#include "model/UnixTime.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace brindle {

/// What the file system tells of one entry.
struct EntryStatus {
    std::int64_t size = 0;            // logical bytes
    std::int64_t allocatedBytes = 0;  // on disk
    std::uint64_t links = 0;
    std::uint64_t inode = 0;
    std::uint64_t attributes = 0;  // the system's own bits
    UnixTime created = 0;     // where the file system does not say: the earlier of modification and change
    bool isDataless = false;  // reading it would make the system fetch it from elsewhere

    bool operator==(const EntryStatus&) const = default;
};

/// One step of a reading.
struct TreeEvent {
    enum class Kind {
        directory,            // before its contents
        directoryEnd,         // after its contents, or at once when they are passed over
        file,                 // a regular file
        unreadableDirectory,  // in place of directoryEnd: its contents, or the rest of them, cannot be read
        noStatus,             // an entry of which nothing can be told
        other,                // symbolic links, devices, sockets, pipes, folders that contain themselves or
                              // are on another computer
    };

    Kind kind = Kind::other;
    int level = 0;          // 0 for the root, 1 for what lies directly in it
    std::string_view path;  // below the root, components joined by "/"; empty for the root
    int error = 0;          // errno of unreadableDirectory and noStatus
    EntryStatus status;     // of directory and file
};

/// Reads one tree depth first, by pulling events.
/// Order: ascending by the bytes of the whole relative path, shorter prefix first, for files and for what
///        lies in folders alike: "a-b", "a.txt", "a/x", "a0".
/// Scope: symbolic links below the root are never followed. Folders on another device than the root's and
///        dataless folders are not entered: directory, then directoryEnd. Folders that are mounted from
///        another computer when the reading begins are not even looked at: a server that does not answer
///        holds nobody up. Only folders are ever opened.
/// Races: a file that goes away while it is read gives no event. A folder that does, or is replaced, is
///        unreadable, so that nobody takes its files for removed.
/// Thread: one at a time.
class TreeReader {
public:
    virtual ~TreeReader() = default;

    /// The next event, valid until the next call; null at the end.
    [[nodiscard]] virtual const TreeEvent* next() = 0;

    /// Passes over the contents of the folder whose directory event came last.
    virtual void skip() = 0;
};

/// Tells an entry from every other one that is there at the same time.
struct FileNumber {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileNumber&) const = default;
};

/// Where trees are read: the system's file systems, or a script in tests.
class TreeSource {
public:
    virtual ~TreeSource() = default;

    /// The folder at `root`. Throws std::system_error, also when something else than a folder is there.
    [[nodiscard]] virtual FileNumber identify(const std::string& root) const = 0;

    /// Throws std::system_error when the contents of `root` cannot be listed.
    virtual void list(const std::string& root) const = 0;

    /// `root` has no symbolic links. Never fails for the root's sake: what is wrong with it is told by the
    /// first events.
    [[nodiscard]] virtual std::unique_ptr<TreeReader> open(const std::string& root) const = 0;
};

/// Whether an entry (a directory or file event) is dataless.
using DatalessTest = std::function<bool(const TreeEvent&)>;

/// The system's own sign of it.
[[nodiscard]] bool isDatalessHere(const TreeEvent& entry);

/// The system's file systems. `isAhead`: readings list folders, and ask for some of their files, on a thread
/// of their own, before the events of those are asked for; otherwise nothing is looked at before its event
/// is. The test of what is dataless may be asked on both threads.
[[nodiscard]] std::unique_ptr<TreeSource> makeTreeSource(DatalessTest isDataless = isDatalessHere,
                                                         bool isAhead = true);

}  // namespace brindle
