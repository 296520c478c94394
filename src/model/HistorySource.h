#pragma once

#include "model/Change.h"
#include "model/FolderSummary.h"
#include "model/HistorySnapshot.h"
#include "model/LocalDay.h"
#include "model/Volume.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <vector>

namespace brindle {

/// Takes changes one at a time, each valid only during the call.
using ChangeSink = std::function<void(const FileChange&)>;

/// How many changes there are, and how many files they stand for.
struct ChangeCount {
    std::int64_t rows = 0;
    std::int64_t files = 0;

    bool operator==(const ChangeCount&) const = default;
};

/// Where the pages get history from: the recorded one, or the example. Any thread may ask; each answer, or
/// the source's error, comes through its future. Periods include both their days.
class HistorySource {
public:
    HistorySource() = default;
    virtual ~HistorySource() = default;
    HistorySource(const HistorySource&) = delete;
    HistorySource& operator=(const HistorySource&) = delete;

    [[nodiscard]] virtual std::future<HistorySnapshot> snapshot() = 0;

    /// The measured changes of a day, in no particular order.
    [[nodiscard]] virtual std::future<std::vector<FileChange>> dayChanges(LocalDay day,
                                                                          LocationScope scope) = 0;

    /// The `limit` folders that the changes of a period are credited to, in the order of largestFirst().
    [[nodiscard]] virtual std::future<std::vector<FolderSummary>> periodContributors(LocalDay first,
                                                                                     LocalDay last,
                                                                                     LocationScope scope,
                                                                                     std::size_t limit) = 0;

    /// The estimated changes of a period.
    [[nodiscard]] virtual std::future<std::vector<FileChange>> periodEstimates(LocalDay first, LocalDay last,
                                                                               LocationScope scope) = 0;

    /// The estimated changes of all time.
    [[nodiscard]] virtual std::future<std::vector<FileChange>> allEstimates(LocationScope scope) = 0;

    /// The measured changes of a period, by day, time and id.
    [[nodiscard]] virtual std::future<std::vector<FileChange>> periodChanges(LocalDay first, LocalDay last,
                                                                             LocationScope scope) = 0;

    /// The capacity samples of a drive in a period, by time.
    [[nodiscard]] virtual std::future<std::vector<VolumeReading>> capacitySamples(std::string volumeID,
                                                                                  LocalDay first,
                                                                                  LocalDay last) = 0;

    /// How many changes of one kind streamChanges() hands over; counted by means of it unless the source has
    /// a shorter way.
    [[nodiscard]] virtual std::future<ChangeCount> countChanges(LocalDay first, LocalDay last,
                                                                LocationScope scope, ChangeSource kind);

    /// Hands the changes of one kind to `sink`, in the order of periodChanges() or periodEstimates(). Unlike
    /// them it works in the caller's thread, holds no list of them, and however slow the sink is, no other
    /// read waits for it. Throws the source's error, or what the sink throws.
    virtual void streamChanges(LocalDay first, LocalDay last, const LocationScope& scope, ChangeSource kind,
                               const ChangeSink& sink) = 0;
};

}  // namespace brindle
