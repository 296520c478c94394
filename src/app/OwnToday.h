#pragma once

#include "model/HistorySnapshot.h"

#include <optional>

namespace brindle {

/// What today brought in the user's own history, also while the window shows the example.
struct OwnToday {
    ChangeTotals totals;
    bool isChecked = false;  // some location was checked today
    bool isPartial = false;
    std::optional<UnixTime> lastCheck;  // of any day

    bool operator==(const OwnToday&) const = default;
};

[[nodiscard]] OwnToday ownTodayOf(const HistorySnapshot& snapshot);

}  // namespace brindle
