#pragma once

#include "model/HistorySnapshot.h"

#include <variant>

namespace brindle {

/// At least one location of the scope that was tracked on the day has a completed check on it.
struct DayRecorded {
    ChangeTotals totals;
    bool partial = false;  // some tracked location had no check, or some folder could not be read

    bool operator==(const DayRecorded&) const = default;
};

/// No check covers the day, but file dates put files on it.
struct DayEstimated {
    EstimateTotals totals;

    bool operator==(const DayEstimated&) const = default;
};

struct DayFuture {
    bool operator==(const DayFuture&) const = default;
};

struct DayWithoutCheck {
    bool operator==(const DayWithoutCheck&) const = default;
};

/// What is known about one day over one scope.
using DayState = std::variant<DayRecorded, DayEstimated, DayFuture, DayWithoutCheck>;

/// Estimates count only on days without any check in the scope.
[[nodiscard]] DayState dayState(const HistorySnapshot& snapshot, const LocalDay& day,
                                const LocationScope& scope);

}  // namespace brindle
