#include "app/pages/OverviewReading.h"

#include "app/pages/DayReading.h"

namespace brindle {

OverviewReading readOverview(HistorySource& source, const HistorySnapshot& snapshot,
                             const LocationScope& scope, const LocalDay& weekFirst,
                             std::size_t contributors) {
    const LocalDay& today = snapshot.today;
    return {.sentence = readDaySentence(source, snapshot, scope, today),
            .contributors = source.periodContributors(weekFirst, today, scope, contributors).get(),
            .isComplete = true};
}

}  // namespace brindle
