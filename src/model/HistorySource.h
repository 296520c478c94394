#pragma once

#include "model/Change.h"
#include "model/FolderSummary.h"
#include "model/HistorySnapshot.h"
#include "model/LocalDay.h"

#include <cstddef>
#include <future>
#include <vector>

namespace brindle {

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
};

}  // namespace brindle
