#pragma once

#include "model/LocationRecord.h"
#include "scan/Drives.h"
#include "scan/LocationAccess.h"
#include "scan/Overlap.h"
#include "store/HistoryStore.h"

#include <span>
#include <stdexcept>
#include <string>

// What changes the list of tracked locations. Every function here waits for the disk and the history, and
// whatever changes it is called with the history's RunLock held.

namespace brindle {

/// A location as it would be stored, with what the user is to know before it is.
struct LocationProposal {
    LocationRecord record;  // a new one, or a known one with its new place
    LocationOverlap overlap;
    std::string explanation;  // in sentences; empty when there is nothing to tell
    bool isRefused = false;   // it cannot be stored: the explanation says why
};

/// A location that cannot be changed in this way. what() is the sentence for the user.
class LocationChangeError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Proposes what the user named: the whole drive where one is mounted there, else the folder.
/// Throws: LocationChoiceError.
[[nodiscard]] LocationProposal proposeLocation(const std::string& path,
                                               std::span<const LocationRecord> existing, UnixTime now);
[[nodiscard]] LocationProposal proposeDrive(const DriveInfo& drive, std::span<const LocationRecord> existing,
                                            UnixTime now);

/// Proposes another folder for a location that is not found any more, or may not be read: the location keeps
/// its history, and its next check compares the folder with what the last one saw. So the folder has to lie
/// on the drive that the location was included on, and, unless it is the same one, has to hold files that
/// were seen in the location: an unrelated folder would be recorded as the removal of everything.
/// Throws: LocationChoiceError, LocationChangeError, SQLiteError.
[[nodiscard]] LocationProposal proposeAgain(HistoryStore& store, const LocationID& id,
                                            const std::string& path);

/// Stores a proposed location, unless others that were included meanwhile refuse it.
/// Throws: LocationChangeError, SQLiteError.
void includeLocation(HistoryStore& store, const LocationRecord& record);

/// Gives a known location the place that was proposed for it. Throws like includeLocation().
void chooseLocationAgain(HistoryStore& store, const LocationRecord& record);

/// What was recorded stays. Does nothing when it is not tracked. Throws: SQLiteError.
void stopTracking(HistoryStore& store, const LocationID& id, UnixTime at);

/// Takes a location away that has never been checked. Does nothing when it is not tracked.
/// Throws: LocationChangeError when it has a history; SQLiteError.
void forgetLocation(HistoryStore& store, const LocationID& id);

}  // namespace brindle
