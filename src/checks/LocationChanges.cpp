#include "checks/LocationChanges.h"

#include "checks/TrackedLocations.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Bookmark.h"

#include <cmath>
#include <filesystem>
#include <utility>
#include <vector>

namespace brindle {
namespace {

// Enough to tell a folder that was moved from another one, and few enough to be looked for at once.
constexpr std::size_t filesLookedFor = 2000;

LocationProposal proposal(LocationCandidate candidate, std::span<const LocationRecord> existing) {
    using Kind = LocationOverlap::Kind;
    const Kind kind = candidate.overlap.kind;
    std::string explanation = overlapText(candidate.overlap, candidate.record, existing).value_or("");
    return {.record = std::move(candidate.record),
            .overlap = std::move(candidate.overlap),
            .explanation = std::move(explanation),
            .isRefused = kind == Kind::same || kind == Kind::inside};
}

void requireNoOverlap(const LocationRecord& record, std::span<const LocationRecord> existing) {
    const auto proposed = proposal({record, findOverlap(record, existing)}, existing);
    if (proposed.isRefused) throw LocationChangeError(proposed.explanation);
}

std::vector<LocationRecord> trackedBeside(HistoryStore& store, const LocationID& id) {
    auto records = trackedLocations(store);
    std::erase_if(records, [&](const LocationRecord& record) { return record.id == id; });
    return records;
}

bool isSameFolder(const LocationRecord& known, const LocationRecord& chosen) {
    if (!known.bookmark || !chosen.bookmark) return false;
    const auto before = decodeBookmark(*known.bookmark);
    const auto now = decodeBookmark(*chosen.bookmark);
    return before && now && before->volumeID == now->volumeID && before->folder == now->folder;
}

std::int64_t countMissing(const std::vector<std::string>& paths, const std::string& folder) {
    return std::ranges::count_if(paths, [&](const std::string& path) {
        std::error_code unknown;
        const auto status = std::filesystem::symlink_status(std::filesystem::path(folder) / path, unknown);
        return !std::filesystem::is_regular_file(status);
    });
}

/// What the next check would make of the chosen folder, where that is worth a word.
void explainContents(LocationProposal& proposed, const InventorySample& seen, const std::string& chosenName) {
    const auto looked = static_cast<std::int64_t>(seen.paths.size());
    const std::int64_t missing = countMissing(seen.paths, proposed.record.scanPath);
    if (missing == 0) return;
    const std::string name = fileNameText(proposed.record.name);
    const std::string chosen = fileNameText(chosenName);
    std::string text;
    if (missing == looked) {
        proposed.isRefused = true;
        text = filled(translated("“{0}” holds none of the files that were last seen in “{1}”: they would be "
                                 "recorded as removed. To track it, add it as a folder of its own."),
                      chosen, name);
    } else {
        const double share = static_cast<double>(missing) / static_cast<double>(looked);
        const auto all = std::llround(share * static_cast<double>(seen.fileCount));
        text = filled(
            translated("Of the {0} files last seen in “{1}”, about {2} aren't in “{3}”. The next check "
                       "records them as removed, and what is new there as added."),
            groupedNumber(seen.fileCount), name, groupedNumber(all), chosen);
    }
    if (!proposed.explanation.empty()) text = proposed.explanation + " " + text;
    proposed.explanation = std::move(text);
}

}  // namespace

LocationProposal proposeLocation(const std::string& path, std::span<const LocationRecord> existing,
                                 UnixTime now) {
    return proposal(makeFolderOrDriveCandidate(path, existing, now), existing);
}

LocationProposal proposeDrive(const DriveInfo& drive, std::span<const LocationRecord> existing,
                              UnixTime now) {
    return proposal(makeDriveCandidate(drive, existing, now), existing);
}

LocationProposal proposeAgain(HistoryStore& store, const LocationID& id, const std::string& path) {
    const auto known = trackedLocation(store, id);
    if (!known) throw LocationChangeError(translated("The location isn't tracked any more."));
    if (known->kind == LocationKind::volume)
        throw LocationChangeError(
            filled(translated("“{}” is a whole drive. It is found again when it is connected."),
                   fileNameText(known->name)));

    const auto others = trackedBeside(store, id);
    auto proposed = proposal(makeCandidate(path, others, known->addedAt), others);
    const LocationRecord chosen = std::exchange(proposed.record, *known);
    if (proposed.isRefused) return proposed;
    if (chosen.volumeID != known->volumeID)
        throw LocationChangeError(
            filled(translated("“{0}” isn't on “{1}”, the drive that holds “{2}”. To track it, add it as a "
                              "folder of its own."),
                   fileNameText(chosen.name), fileNameText(known->volumeName), fileNameText(known->name)));
    proposed.record.path = chosen.path;
    proposed.record.scanPath = chosen.scanPath;
    proposed.record.bookmark = chosen.bookmark;
    if (!isSameFolder(*known, chosen))
        explainContents(proposed, store.sampleInventory(id, filesLookedFor).get(), chosen.name);
    return proposed;
}

void includeLocation(HistoryStore& store, const LocationRecord& record) {
    requireNoOverlap(record, trackedLocations(store));
    store.insert(record).get();
}

void chooseLocationAgain(HistoryStore& store, const LocationRecord& record) {
    requireNoOverlap(record, trackedBeside(store, record.id));
    store.updateAccess(record.id, record.path, record.scanPath, record.bookmark).get();
    store.setStatus(record.id, LocationStatus::active).get();
}

void stopTracking(HistoryStore& store, const LocationID& id, UnixTime at) {
    if (trackedLocation(store, id)) store.remove(id, at).get();
}

void forgetLocation(HistoryStore& store, const LocationID& id) {
    store.forget(id).get();
    if (const auto kept = trackedLocation(store, id))
        throw LocationChangeError(
            filled(translated("“{}” has a history, which is never deleted."), fileNameText(kept->name)));
}

}  // namespace brindle
