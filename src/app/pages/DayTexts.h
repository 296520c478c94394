#pragma once

#include "analysis/RangeFigures.h"

#include <QString>
#include <QStringList>

// What the pages say of a day.

namespace brindle {

/// By which views draw a day: "recorded", "partial", "estimated", "future" or "noCheck". A day that was not
/// tracked or is kept no longer is drawn as one without a check.
[[nodiscard]] QString drawnState(const DayFigures& figures);

/// The same in a word or two for a person, and why there are no figures: "Not tracked".
[[nodiscard]] QString stateWord(const DayFigures& figures);

/// What is to be known of the day beside its figures, a sentence each: why it is partial, that it is an
/// estimate, or why there is nothing.
[[nodiscard]] QStringList dayNotes(const DayFigures& figures, const HistorySnapshot& snapshot,
                                   const LocationScope& scope);

/// The day in one line, as a screen reader reads it: "Saturday, March 7: net change +1.2 GB, 1.5 GB added,
/// 300.0 MB freed, partial".
[[nodiscard]] QString dayReading(const std::string& label, const DayFigures& figures);

}  // namespace brindle
