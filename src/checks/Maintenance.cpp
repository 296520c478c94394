#include "checks/Maintenance.h"

#include "model/Retention.h"

#include <exception>

namespace brindle {
void maintain(HistoryStore& store, const Clock& now, const Calendar& calendar) {
    const LocalDay today = calendar.day(now());
    const LocalDay first = firstKeptDay(calendar, today);
    try {
        const bool isDue = store.isPruningDue(first, today).get();
        if (isDue) store.prune(first).get();
        // Whoever reads meanwhile keeps the log, and what it holds, from being emptied until the next run.
        if (store.logBytes() > 0) static_cast<void>(store.checkpoint().get());
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): the next run tries again
    }
}

}  // namespace brindle
