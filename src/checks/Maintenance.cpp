#include "checks/Maintenance.h"

#include "model/Retention.h"

#include <cstdint>

namespace brindle {
namespace {

// SQLite lets its log grow to 4 MB before it starts over; a large check makes it as large as the check.
constexpr std::uintmax_t largeLogBytes = std::uintmax_t{8} << 20;

}  // namespace

void maintain(HistoryStore& store, const Clock& now, const Calendar& calendar) {
    const LocalDay today = calendar.day(now());
    const LocalDay first = firstKeptDay(calendar, today);
    try {
        const bool isDue = store.isPruningDue(first, today).get();
        if (isDue) store.prune(first).get();
        if (isDue || store.logBytes() > largeLogBytes) static_cast<void>(store.checkpoint().get());
    } catch (const SQLiteError&) {  // NOLINT(bugprone-empty-catch): the next run tries again
    }
}

}  // namespace brindle
