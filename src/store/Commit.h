#pragma once

#include "model/Calendar.h"
#include "model/Cancellation.h"
#include "model/Change.h"
#include "model/LocationRecord.h"
#include "model/Volume.h"
#include "model/Walk.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>

namespace brindle {

/// One check of one location, as the commit needs it.
struct CheckRequest {
    LocationRecord record;  // as loaded before the check
    Walk walk;
    std::shared_ptr<const CancellationFlag> cancellation;
    Clock now = systemNow;  // asked twice: before the walk, and before anything is recorded
    /// Reads the location's volume; asked once, after the walk. Nothing: no sample is stored.
    std::function<std::optional<VolumeReading>()> readVolume;
    Calendar calendar = Calendar::current();
};

/// What a committed check recorded.
struct CheckCommit {
    LocationID locationID;
    bool isBaseline = false;
    ChangeTotals totals;
    std::int64_t trackedBytes = 0;
    std::int64_t unreadableCount = 0;
    UnixTime finishedAt = 0;

    bool operator==(const CheckCommit&) const = default;
};

/// The location was removed or forgotten after its record was loaded.
class LocationGone : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override {
        return "The location isn't tracked any more.";
    }
};

/// Walks the location and turns what the walk saw into history, in one transaction: the first check of a
/// location sets its inventory, a later one records every difference to it.
///
/// What cannot be seen is not gone: files below a folder that is unreadable now stay in the inventory, and
/// files that show up below one that was unreadable before enter it silently.
///
/// The walk is asked again when another program committed a check of the location meanwhile.
///
/// Throws: what the walk throws, Cancelled, LocationGone, SQLiteError. Then nothing of the check is left.
/// Thread:  the writer's.
[[nodiscard]] CheckCommit commitCheck(SQLiteConnection& db, const CheckRequest& request);

}  // namespace brindle
