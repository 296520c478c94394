#pragma once

#include "platform/BlockDevice.h"
#include "platform/FileDescriptor.h"
#include "platform/Mounts.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace brindle {

enum class FolderState {
    readable,    // a folder that can be listed and entered
    refused,     // the permissions of the folder, or of one above it, forbid it
    missing,     // nothing is there, or what is there is not mounted now
    notAFolder,  // something else is there
    notLocal,    // on another computer; not touched
    pseudo,      // on a file system that stores nothing; not touched
};

struct BirthTime {
    std::int64_t seconds = 0;
    std::uint32_t nanoseconds = 0;

    auto operator<=>(const BirthTime&) const = default;
};

/// Tells one folder from every other on its file system, whatever it is called.
struct FolderIdentity {
    std::uint64_t inode = 0;
    std::optional<BirthTime> birth;  // absent where the file system keeps none

    bool operator==(const FolderIdentity&) const = default;
};

/// What stands at a path.
struct FolderProbe {
    FolderState state = FolderState::missing;
    FileDescriptor folder;  // open for reading, at its beginning; only when readable

    std::string path;  // without symbolic links; only when readable

    // When readable or refused:
    std::optional<Mount> mount;              // that the path leads to
    std::optional<BlockDevice> device;       // that `mount` lies on
    std::string volumeID;                    // as volumeIdentity() gives it
    std::optional<FolderIdentity> identity;  // absent when a folder above was refused
};

/// Follows a standardised path to its folder, through symbolic links. Before each step the table decides
/// whether it leads to another computer or to nothing that is stored: then nothing there is touched. Mounts
/// nothing. A mount that is not the table's own is `missing`, so that an answer never mixes two drives.
[[nodiscard]] FolderProbe probeFolder(const std::string& path, const MountTable& mounts,
                                      const DeviceLookup& lookUp = lookUpDevice);

/// The path without symbolic links of what stands at a standardised path, whatever it is, found in the same
/// careful way. Nothing when nothing is there or it cannot be told.
[[nodiscard]] std::optional<std::string> realPath(const std::string& path, const MountTable& mounts);

}  // namespace brindle
