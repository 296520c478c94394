#include "store/ChangeRuns.h"

#include "store/LocationFilter.h"

#include <algorithm>
#include <cstddef>
#include <tuple>

namespace brindle {
namespace {

constexpr std::size_t mostRuns = 10'000;  // of a day; a check makes one

struct IDs {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

/// The ids of the day's changes of each location, without gaps. Reads the index by day alone, in its order.
std::optional<std::vector<IDs>> stretchesOf(SQLiteConnection& db, const std::string& day,
                                            const std::optional<LocationID>& location) {
    auto rows = prepareFor(db, location, "SELECT location_id, id FROM observations WHERE local_day = ?",
                           " ORDER BY location_id, id", day);
    std::vector<IDs> stretches;
    std::string locationOfLast;
    while (rows.step()) {
        const std::int64_t id = rows.int64(1);
        if (!stretches.empty() && stretches.back().last == id - 1 && rows.textView(0) == locationOfLast) {
            stretches.back().last = id;
        } else {
            if (stretches.size() == mostRuns) return {};
            stretches.push_back({id, id});
            locationOfLast = rows.textView(0);
        }
    }
    return stretches;
}

}  // namespace

std::optional<std::vector<ChangeRun>> changeRunsOf(SQLiteConnection& db, const std::string& day,
                                                   const std::optional<LocationID>& location) {
    const auto stretches = stretchesOf(db, day, location);
    if (!stretches) return {};
    // In the order of the table: to look every change up by the index takes several times as long.
    auto times = db.prepare("SELECT id, observed_at FROM observations WHERE id BETWEEN ? AND ? ORDER BY id");
    std::vector<ChangeRun> runs;
    for (const auto& [first, last] : *stretches) {
        times.bind(first, last);
        for (bool isFirst = true; times.step(); isFirst = false) {
            const std::int64_t id = times.int64(0);
            const UnixTime observedAt = times.real(1);
            if (isFirst || runs.back().observedAt != observedAt) {
                if (runs.size() == mostRuns) return {};
                runs.push_back({.observedAt = observedAt, .firstID = id});
            }
            runs.back().lastID = id;
        }
    }
    std::ranges::sort(runs, {}, [](const ChangeRun& run) { return std::tuple(run.observedAt, run.firstID); });
    return runs;
}

}  // namespace brindle
