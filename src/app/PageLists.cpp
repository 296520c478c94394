#include "app/PageLists.h"

#include "analysis/DaySentence.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

#include <algorithm>

namespace brindle {
namespace {

QString stateText(LocationStatus status) {
    if (status == LocationStatus::needsAccess) return translated("Needs access");
    if (status == LocationStatus::disconnected) return translated("Disconnected");
    return translated("Full access");
}

QString unreadableText(const HistoryFigures* figures, const LocationID& id) {
    if (figures == nullptr) return {};
    const auto folders = figures->unreadable.find(id);
    if (folders == figures->unreadable.end()) return {};
    const auto count = static_cast<std::int64_t>(folders->second.size());
    return pageText(translatedCount("{} folder couldn't be read", "{} folders couldn't be read", count),
                    groupedNumber(count));
}

QString snapshotText(const VolumeReading& drive) {
    if (!drive.snapshotCount) return {};
    if (*drive.snapshotCount == 0) return translated("No local snapshots on this volume.");
    return pageText(
        translatedCount("{0} local snapshot on this volume, counted in Not visible to Brindle. {1}",
                        "{0} local snapshots on this volume, counted in Not visible to Brindle. {1}",
                        *drive.snapshotCount),
        groupedNumber(*drive.snapshotCount), translated(platformText::snapshotSizes));
}

QString purgeableText(const UsedSpaceBreakdown& parts) {
    if (parts.purgeable == 0) return {};
    return pageText(translated(platformText::purgeable), byteAmount(parts.purgeable));
}

}  // namespace

std::unique_ptr<FolderList> makeFolderList() {
    return std::make_unique<FolderList>(
        [](const FolderRow& row) { return row.ref; },
        std::vector<FolderList::Role>{{"place", [](const FolderRow& row) { return row.place; }},
                                      {"added", [](const FolderRow& row) { return row.added; }},
                                      {"freed", [](const FolderRow& row) { return row.freed; }},
                                      {"addedShare", [](const FolderRow& row) { return row.addedShare; }},
                                      {"freedShare", [](const FolderRow& row) { return row.freedShare; }}});
}

std::vector<LocationRow> locationRows(const HistorySnapshot& snapshot, const HistoryFigures* figures,
                                      const Calendar& calendar) {
    std::vector<LocationRow> rows;
    for (const TrackedLocation& location : snapshot.currentlyTracked()) {
        LocationRow row{.id = location.id.rawValue,
                        .name = shownName(location.name),
                        .path = shownName(location.path),
                        .state = stateText(location.status),
                        .size = {},
                        .lastCheck = translated("Not checked yet"),
                        .unreadable = unreadableText(figures, location.id)};
        if (location.lastCheck) {
            row.size = QString::fromStdString(byteAmount(location.trackedBytes));
            row.lastCheck = QString::fromStdString(calendar.timeLabel(*location.lastCheck));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<DriveRow> driveRows(const HistorySnapshot& snapshot) {
    const auto tracked = snapshot.currentlyTracked();
    std::vector<DriveRow> rows;
    for (const VolumeReading& drive : snapshot.volumes) {
        if (std::ranges::find(tracked, drive.id, &TrackedLocation::volumeID) == tracked.end()) continue;
        DriveRow row{.id = drive.id,
                     .name = shownName(drive.name),
                     .mountPath = shownName(drive.mountPath),
                     .available = pageText(translated("{0} available of {1}"),
                                           byteAmount(drive.availableBytes), byteAmount(drive.totalBytes)),
                     .snapshots = snapshotText(drive),
                     .purgeable = {}};
        if (const auto found = snapshot.breakdowns.find(drive.id); found != snapshot.breakdowns.end())
            row.purgeable = purgeableText(found->second);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<FolderRow> folderRows(std::span<const FolderSummary> folders, const HistorySnapshot& snapshot) {
    std::int64_t largest = 0;
    for (const FolderSummary& folder : folders) largest = std::max(largest, folder.totals.volume());
    std::vector<FolderRow> rows;
    rows.reserve(folders.size());
    for (const auto& [ref, totals] : folders)
        rows.push_back({.ref = ref,
                        .place = QString::fromStdString(placeText(ref, snapshot.locations)),
                        .added = QString::fromStdString(signedByteAmount(totals.added)),
                        .freed = QString::fromStdString(signedByteAmount(-totals.freed)),
                        .addedShare = shareOf(totals.added, largest),
                        .freedShare = shareOf(totals.freed, largest)});
    return rows;
}

}  // namespace brindle
