#include "store/ChangeRuns.h"

#include "store/LocationFilter.h"

#include <algorithm>
#include <cstddef>
#include <tuple>

namespace brindle {
namespace {

constexpr std::size_t mostRuns = 10'000;  // of a day; a check makes one

bool areMixed(const ChangeRun& run, const ChangeRun& next) {
    return run.observedAt == next.observedAt && run.lastID > next.firstID;
}

}  // namespace

std::optional<std::vector<ChangeRun>> changeRunsOf(SQLiteConnection& db, const std::string& day,
                                                   const std::optional<LocationID>& location) {
    // The order of the index by day, so that nothing is sorted here either.
    auto rows =
        prepareFor(db, location, "SELECT location_id, id, observed_at FROM observations WHERE local_day = ?",
                   " ORDER BY location_id, id", day);
    std::vector<ChangeRun> runs;
    while (rows.step()) {
        const std::int64_t id = rows.int64(1);
        const UnixTime observedAt = rows.real(2);
        if (runs.empty() || runs.back().observedAt != observedAt ||
            runs.back().location.rawValue != rows.textView(0)) {
            if (runs.size() == mostRuns) return {};
            runs.push_back({.location = {rows.text(0)}, .observedAt = observedAt, .firstID = id});
        }
        runs.back().lastID = id;
    }
    std::ranges::sort(runs, {}, [](const ChangeRun& run) { return std::tuple(run.observedAt, run.firstID); });
    if (std::ranges::adjacent_find(runs, areMixed) != runs.end()) return {};
    return runs;
}

}  // namespace brindle
