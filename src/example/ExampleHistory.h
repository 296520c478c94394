#pragma once

#include "model/Calendar.h"
#include "model/HistorySource.h"
#include "model/LocationRecord.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace brindle {

struct PlaceHistory;

/// A history that nobody had, for every page to be tried on: two locations on two drives, over all kept days.
/// It touches no disk, its futures are ready at once, and no operation fails.
///
/// It is made as it would be known at `now`, and for the same days it is always the same: what is recorded
/// for yesterday is what was recorded for today a day ago.
class ExampleHistory final : public HistorySource {
public:
    static constexpr std::uint64_t usualSeed = 7;

    explicit ExampleHistory(const Calendar& calendar = Calendar::current(), UnixTime now = systemNow(),
                            std::uint64_t seed = usualSeed);

    [[nodiscard]] std::future<HistorySnapshot> snapshot() override;
    [[nodiscard]] std::future<std::vector<FileChange>> dayChanges(LocalDay day, LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FolderSummary>> periodContributors(LocalDay first, LocalDay last,
                                                                             LocationScope scope,
                                                                             std::size_t limit) override;
    [[nodiscard]] std::future<std::vector<FileChange>> periodEstimates(LocalDay first, LocalDay last,
                                                                       LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FileChange>> allEstimates(LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FileChange>> periodChanges(LocalDay first, LocalDay last,
                                                                     LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<VolumeReading>> capacitySamples(std::string volumeID,
                                                                          LocalDay first,
                                                                          LocalDay last) override;
    void streamChanges(LocalDay first, LocalDay last, const LocationScope& scope, ChangeSource kind,
                       const ChangeSink& sink) override;

    /// The locations as a store would have them, in the order of the snapshot.
    [[nodiscard]] const std::vector<LocationRecord>& locationRecords() const { return records_; }

private:
    void add(TrackedLocation location, PlaceHistory& found);

    Calendar calendar_;
    HistorySnapshot snapshot_;
    std::vector<LocationRecord> records_;
    std::vector<FileChange> changes_;                            // by day, time and id
    std::vector<FileChange> estimates_;                          // by day, size and id
    std::map<std::string, std::vector<VolumeReading>> samples_;  // of each drive, by time
};

}  // namespace brindle
