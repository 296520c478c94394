#include "app/OwnToday.h"

#include "model/DayState.h"

namespace brindle {

OwnToday ownTodayOf(const HistorySnapshot& snapshot) {
    OwnToday own{.lastCheck = snapshot.latestCheck({})};
    const DayState state = dayState(snapshot, snapshot.today, {});
    if (const auto* recorded = std::get_if<DayRecorded>(&state)) {
        own.totals = recorded->totals;
        own.isChecked = true;
        own.isPartial = recorded->partial;
    }
    return own;
}

}  // namespace brindle
