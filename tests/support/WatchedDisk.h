#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace brindle {

/// A call that changes the disk, as SQLite is about to make it.
struct DiskCall {
    enum class Kind { open, write, truncate, sync, remove };

    Kind kind = Kind::open;
    std::string_view path;        // empty: a file that is gone when it is closed
    std::int64_t offset = 0;      // of a write; of a truncation the new size
    std::span<const char> bytes;  // of a write
};

/// Stands between SQLite and the disk while it lives, for every connection opened meanwhile. One at a time in
/// a process.
class WatchedDisk {
public:
    /// Gives SQLITE_OK, or the code with which the call fails without being made. Called from any thread.
    using Watch = std::function<int(const DiskCall&)>;

    explicit WatchedDisk(Watch watch);
    ~WatchedDisk();
    WatchedDisk(const WatchedDisk&) = delete;
    WatchedDisk& operator=(const WatchedDisk&) = delete;
};

}  // namespace brindle
