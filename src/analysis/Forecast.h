#pragma once

#include "model/Calendar.h"
#include "model/Volume.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace brindle {

/// Days from today until nothing of a drive is available any more, if it goes on as it did.
struct FullIn {
    int days = 0;
    int earliest = 0;  // where its pace was among the fastest tenth; at most `days`
    int latest = 0;    // where it was among the slowest tenth; at least `days`
    std::int64_t bytesPerDay = 0;
    LocalDay since;  // the first day whose reading tells

    bool operator==(const FullIn&) const = default;
};

/// Why there is no forecast. In this order: the first that holds.
enum class NoForecast {
    tooFewReadings,  // of one size of the drive: on too few days, over too short a time, or with a long gap
    notSeenLately,
    full,
    notFilling,
    tooFar,
    uneven,
};

/// "tooFewReadings", "notSeenLately", "full", "notFilling", "tooFar", "uneven".
[[nodiscard]] std::string_view rawText(NoForecast reason);

using Forecast = std::variant<FullIn, NoForecast>;

/// From the capacity samples of one drive, in any order. Of each day the last one counts; samples dated
/// ahead of today are ignored, and a drive whose size changed starts anew.
[[nodiscard]] Forecast forecast(std::span<const VolumeReading> samples, const LocalDay& today,
                                const Calendar& calendar);

/// For a person, in days, weeks or months, whichever claims no more than is known.
[[nodiscard]] std::string sentence(const Forecast& forecast, const Calendar& calendar);

}  // namespace brindle
