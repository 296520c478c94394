#pragma once

#include "model/Calendar.h"
#include "model/HistorySnapshot.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// How the used space of a drive moved between two of its capacity samples, beside what the recorded changes
/// account for. All figures in bytes; negative: there is less.
struct Reconciliation {
    VolumeReading from;
    VolumeReading to;
    std::int64_t usedMoved = 0;
    std::int64_t trackedMoved = 0;  // net recorded changes of the drive's locations, logical sizes
    /// What is used beyond this volume's own use: blocks kept for the system and, where `isShared`, the other
    /// volumes. Absent where the file system does not tell its own use.
    std::optional<std::int64_t> beyondVolumeMoved;
    /// Absent where no sample has any space that the system would free.
    std::optional<std::int64_t> purgeableMoved;
    std::optional<std::int64_t> snapshotsMoved;  // a count; absent where it is not known
    bool isResized = false;                      // the drive's capacity is not what it was
    bool isShared = false;                       // other volumes use the same space
    bool isTrackedWhole = false;                 // the drive itself is a location
    bool isPartial = false;                      // some check could not read everything

    [[nodiscard]] std::int64_t unexplained() const;  // usedMoved - trackedMoved
};

/// Compares the last sample before `first` with the last one through `last`, and the changes recorded on the
/// days after the one and through the other; without a sample before `first`, its earliest day stands in.
/// `samples` are those of one drive, by time, and may begin anywhere. Absent when there are no two days to
/// compare.
[[nodiscard]] std::optional<Reconciliation> reconcile(const HistorySnapshot& snapshot,
                                                      std::span<const VolumeReading> samples,
                                                      const LocalDay& first, const LocalDay& last,
                                                      const Calendar& calendar);

/// What moved, what explains it, and what is known of the rest, each in a sentence.
[[nodiscard]] std::vector<std::string> reconciliationSentences(const Reconciliation& reconciliation,
                                                               const Calendar& calendar);

}  // namespace brindle
