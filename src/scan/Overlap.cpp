#include "scan/Overlap.h"

#include "model/FileNameText.h"
#include "model/NestedPath.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>

namespace brindle {
namespace {

const LocationRecord* recordOf(const LocationID& id, std::span<const LocationRecord> records) {
    const auto found = std::ranges::find(records, id, &LocationRecord::id);
    return found != records.end() ? &*found : nullptr;
}

}  // namespace

LocationOverlap findOverlap(const LocationRecord& added, std::span<const LocationRecord> existing) {
    const LocationRecord* around = nullptr;
    std::vector<LocationID> within;
    for (const auto& record : existing) {
        if (record.removedAt || record.volumeID != added.volumeID) continue;
        const bool caseSensitive = added.caseSensitive || record.caseSensitive;
        const bool isInside = liesAtOrBelow(added.scanPath, record.scanPath, caseSensitive);
        const bool contains = liesAtOrBelow(record.scanPath, added.scanPath, caseSensitive);
        if (isInside && contains) return {LocationOverlap::Kind::same, {record.id}};
        if (isInside && (around == nullptr || around->scanPath.size() < record.scanPath.size()))
            around = &record;
        if (contains) within.push_back(record.id);
    }
    if (around != nullptr) return {LocationOverlap::Kind::inside, {around->id}};
    if (!within.empty()) return {LocationOverlap::Kind::contains, std::move(within)};
    return {};
}

std::optional<std::string> overlapText(const LocationOverlap& overlap, const LocationRecord& added,
                                       std::span<const LocationRecord> existing) {
    if (overlap.kind == LocationOverlap::Kind::none) return {};
    const auto addedName = fileNameText(added.name);
    const auto* other = recordOf(overlap.locations.front(), existing);
    const auto otherName = fileNameText(other != nullptr ? other->name : "");
    const auto count = static_cast<std::int64_t>(overlap.locations.size());

    if (overlap.kind == LocationOverlap::Kind::same)
        return filled(translated("“{}” is already included."), otherName);
    if (overlap.kind == LocationOverlap::Kind::inside)
        return filled(translated("“{}” is already checked as part of “{}”."), addedName, otherName);
    if (count == 1)
        return filled(translated("“{0}” contains “{1}”, which Brindle already checks. “{1}” "
                                 "keeps being checked on its own, and saved history remains."),
                      addedName, otherName);
    return filled(translatedCount("“{}” contains {} location, which Brindle already checks. It keeps being "
                                  "checked on its own, and saved history remains.",
                                  "“{}” contains {} locations, which Brindle already checks. Each keeps "
                                  "being checked on its own, and saved history remains.",
                                  count),
                  addedName, groupedNumber(count));
}

}  // namespace brindle
