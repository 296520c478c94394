#pragma once

#include "analysis/RangeFigures.h"
#include "model/Calendar.h"
#include "model/Change.h"
#include "model/HistorySnapshot.h"

#include <QString>

// What the Activity page says of a day or a period.

namespace brindle {

/// The days and the scope that are looked at. Refers to the history.
struct PeriodOf {
    const HistorySnapshot& history;
    LocationScope scope;
    LocalDay first;
    LocalDay last;
    bool withEstimates = false;

    [[nodiscard]] bool isDay() const { return first == last; }
};

/// "Saturday, March 7, 2026", "Sunday, March 1 to Saturday, March 7, 2026".
[[nodiscard]] QString periodTitle(const PeriodOf& period, const Calendar& calendar);

/// Why nothing at all is known; empty when something is.
[[nodiscard]] QString gapSentence(const PeriodOf& period, const Calendar& calendar, bool isChecking);

/// How much of the period is behind its figures, where that is not all of it; empty where it is, or where
/// there are none.
[[nodiscard]] QString coverageSentence(const PeriodOf& period, const Calendar& calendar);

/// "1,204 files, 1.2 GB added, 300.0 MB freed".
[[nodiscard]] QString totalsText(const ChangeTotals& totals);

}  // namespace brindle
