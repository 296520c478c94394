#pragma once

#include "model/LocationRecord.h"
#include "model/UnixTime.h"
#include "platform/Mounts.h"
#include "scan/Drives.h"
#include "scan/Overlap.h"

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <variant>

namespace brindle {

/// A location that could be included: its record, not yet stored, and how it meets the others.
struct LocationCandidate {
    LocationRecord record;
    LocationOverlap overlap;

    bool operator==(const LocationCandidate&) const = default;
};

/// Why a chosen folder cannot be included. what() is the sentence that tells the user.
class LocationChoiceError : public std::runtime_error {
public:
    enum class Reason { notLocal, missing, notAFolder, needsAccess, pseudo };

    LocationChoiceError(Reason why, const std::string& path);

    Reason reason;
};

/// Makes a record for a folder as the user named it, relative to the working folder if need be.
/// Throws: LocationChoiceError.
[[nodiscard]] LocationCandidate makeCandidate(const std::string& chosenPath,
                                              std::span<const LocationRecord> existing, UnixTime now,
                                              const MountTable& mounts = MountTable::current());

/// Makes a record for a whole drive.
[[nodiscard]] LocationCandidate makeDriveCandidate(const DriveInfo& drive,
                                                   std::span<const LocationRecord> existing, UnixTime now);

/// Makes a record for what the user named: the whole drive where one is mounted there, else the folder.
/// Throws: LocationChoiceError.
[[nodiscard]] LocationCandidate makeFolderOrDriveCandidate(const std::string& chosenPath,
                                                           std::span<const LocationRecord> existing,
                                                           UnixTime now,
                                                           const MountTable& mounts = MountTable::current());

/// Where a location is now, and whether it may be read.
struct AccessReady {
    std::string path;
    std::string scanPath;                    // the same folder, without symbolic links
    std::optional<Bytes> refreshedBookmark;  // to be stored with the path

    bool operator==(const AccessReady&) const = default;
};
struct AccessDisconnected {
    bool operator==(const AccessDisconnected&) const = default;
};
struct AccessNeeded {
    bool operator==(const AccessNeeded&) const = default;
};
using AccessState = std::variant<AccessReady, AccessDisconnected, AccessNeeded>;

/// Finds a stored location again. Ready only on the volume it was included on: the empty mount point of a
/// drive that is away, read as the location, would become the removal of every file on it.
[[nodiscard]] AccessState resolveAccess(const LocationRecord& record,
                                        const MountTable& mounts = MountTable::current());

}  // namespace brindle
