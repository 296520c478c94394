#pragma once

#include "model/LocationRecord.h"
#include "platform/BlockDevice.h"
#include "platform/FolderProbe.h"
#include "platform/Mounts.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace brindle {

/// What it takes to find a folder again after it was renamed or replaced, and to tell that its drive is away.
struct Bookmark {
    std::string path;         // standardised
    std::string volumeID;     // of the file system that the folder lies on
    std::string mountPath;    // where that is mounted
    std::string mountedRoot;  // which folder of it is
    FolderIdentity folder;

    bool operator==(const Bookmark&) const = default;
};

/// The bytes that a bookmark is stored as. They start with the version of their form.
[[nodiscard]] Bytes encode(const Bookmark& bookmark);

/// Nothing for bytes that encode() never gave.
[[nodiscard]] std::optional<Bookmark> decodeBookmark(std::span<const std::byte> bytes);

/// A bookmark of the folder at a standardised path, which was found readable by the probe.
[[nodiscard]] Bookmark makeBookmark(std::string path, const FolderProbe& probe);

/// Where a bookmark leads today.
struct FolderFound {
    std::string path;
    FolderProbe probe;
    bool isStale = false;  // renamed or replaced: a fresh bookmark is due
};
struct FolderGone {};     // or its file system is not mounted
struct FolderRefused {};  // there, and not to be read
using BookmarkResolution = std::variant<FolderFound, FolderGone, FolderRefused>;

/// Finds the folder at its path, whichever folder of the same mounted file system that is today, else by its
/// identity among the folders beside its old place. A folder on another file system, or reached through
/// another mount of it, is never it: what stands at the path then is the empty mount point of a drive that is
/// away. Mounts nothing, touches no other computer.
[[nodiscard]] BookmarkResolution resolve(const Bookmark& bookmark, const MountTable& mounts,
                                         const DeviceLookup& lookUp = lookUpDevice);

}  // namespace brindle
