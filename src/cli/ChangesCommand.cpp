#include "cli/ChangesCommand.h"

#include "cli/ChangeLine.h"
#include "cli/LocationNames.h"
#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/NestedPath.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Paths.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>

namespace brindle {
namespace {

/// A folder of a location, as a filter of changes.
struct FolderFilter {
    std::optional<LocationID> location;
    std::vector<std::string> components;

    [[nodiscard]] bool passes(const FileChange& change) const {
        return change.folder.size() >= components.size() &&
               std::equal(components.begin(), components.end(), change.folder.begin());
    }
};

FolderFilter filterFor(const std::string& folder, const std::vector<LocationRecord>& records) {
    if (folder.empty()) return {};
    const std::string path = standardizedPath(folder);
    const LocationRecord* innermost = nullptr;
    for (const LocationRecord& record : records)
        if (liesAtOrBelow(path, record.path, record.caseSensitive) &&
            (innermost == nullptr || record.path.size() >= innermost->path.size()))
            innermost = &record;
    if (innermost == nullptr)
        throw UsageError(fmt::format(fmt::runtime(translated("“{}” isn't in any included location.")),
                                     fileNameText(path)));
    FolderFilter filter{.location = innermost->id, .components = {}};
    std::string_view below = std::string_view(path).substr(innermost->path.size());
    while (!below.empty()) {
        const auto slash = std::min(below.find('/'), below.size());
        if (slash > 0) filter.components.emplace_back(below.substr(0, slash));
        below.remove_prefix(std::min(slash + 1, below.size()));
    }
    return filter;
}

void sortLargestFirst(std::vector<FileChange>& changes) {
    std::ranges::sort(changes, [](const FileChange& a, const FileChange& b) {
        const auto magnitude = [](const FileChange& change) { return std::abs(change.byteDelta); };
        return magnitude(a) != magnitude(b) ? magnitude(a) > magnitude(b) : a.id < b.id;
    });
}

void print(const Context& context, const std::map<LocalDay, ChangeTotals>& days,
           const std::vector<FileChange>& changes, const std::vector<LocationRecord>& records,
           std::size_t limit) {
    Output& output = context.output;
    for (const auto& [day, totals] : days)
        output.line(fmt::format("{}: {}", output.emphasized(context.calendar.longLabel(day)),
                                totalsText(totals, output)));
    const LocationNames names(records);
    const std::size_t shown = limit == 0 ? changes.size() : std::min(limit, changes.size());
    for (std::size_t i = 0; i < shown; ++i)
        output.line(changeLine(changes[i], output, &names.of(changes[i].locationID)));
    if (const auto more = static_cast<std::int64_t>(changes.size() - shown); more > 0)
        output.line(fmt::format(fmt::runtime(translatedCount("  … and {} more; --limit 0 lists all",
                                                             "  … and {} more; --limit 0 lists all", more)),
                                groupedNumber(more)));
}

}  // namespace

ExitCode runChanges(const Context& context, const ChangesOptions& options) {
    const Period period = periodOf(options.period, context.calendar, context.calendar.day(systemNow()));
    HistoryStore store = context.openHistory();
    const auto records = store.loadLocations().get();
    const FolderFilter filter = filterFor(options.folder, records);

    auto changes = store.changes(period.first, period.last, filter.location).get();
    std::erase_if(changes, [&](const FileChange& change) { return !filter.passes(change); });
    std::map<LocalDay, ChangeTotals> days;
    for (const FileChange& change : changes) days[change.day].add(change);
    sortLargestFirst(changes);

    if (context.asJson) {
        auto totals = nlohmann::ordered_json::array();
        for (const auto& [day, sums] : days) totals.push_back({{"day", day}, {"totals", sums}});
        context.output.json(
            {{"first", period.first}, {"last", period.last}, {"days", totals}, {"changes", changes}});
    } else if (changes.empty()) {
        context.output.sentence(translated("No changes are recorded."));
    } else {
        print(context, days, changes, records, options.limit);
    }
    return changes.empty() ? ExitCode::nothingFound : ExitCode::success;
}

}  // namespace brindle
