#pragma once

#include "model/Calendar.h"
#include "model/HistorySnapshot.h"

#include <optional>
#include <string>

namespace brindle {

/// What file dates say of the time before the locations of a scope were tracked, on the days that are kept.
/// It counts every estimate, also on days on which another location of the scope was checked already.
struct EstimateSummary {
    EstimateTotals totals;
    LocalDay first;
    LocalDay last;

    bool operator==(const EstimateSummary&) const = default;
};

/// Absent when there are no estimates.
[[nodiscard]] std::optional<EstimateSummary> estimateSummary(const HistorySnapshot& snapshot,
                                                             const LocationScope& scope);

[[nodiscard]] std::string sentence(const EstimateSummary& summary, const Calendar& calendar);

}  // namespace brindle
