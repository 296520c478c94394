#pragma once

#include "app/HistorySession.h"
#include "app/ListModel.h"
#include "model/Calendar.h"
#include "model/FolderSummary.h"
#include "model/HistorySnapshot.h"

#include <QString>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// The lists of the pages: rows whose texts are ready to be shown, and the figures that bars are drawn from.

namespace brindle {

/// A tracked location.
struct LocationRow {
    std::string id;
    QString name;
    QString path;
    QString state;       // "Full access", "Needs access", "Disconnected"
    QString size;        // at its last check; empty before one
    QString lastCheck;   // "Not checked yet" before one
    QString unreadable;  // "3 folders couldn't be read"; empty when all could

    bool operator==(const LocationRow&) const = default;
};

/// A drive that holds a location, as its latest sample found it.
struct DriveRow {
    std::string id;
    QString name;
    QString mountPath;
    QString available;  // "278.9 GB available of 994.7 GB"
    QString snapshots;  // the line about local snapshots; empty where they cannot be counted
    QString purgeable;  // the line about what the system would free; empty where there is none

    bool operator==(const DriveRow&) const = default;
};

/// A folder that changes are credited to.
struct FolderRow {
    FolderRef ref;
    QString place;  // "Studio SSD/Footage", the location's name left out where there is only one
    QString added;
    QString freed;
    double addedShare = 0;  // of the largest volume of change in the list, 0 to 1
    double freedShare = 0;

    bool operator==(const FolderRow&) const = default;
};

using FolderList = ListModel<FolderRow, FolderRef>;

[[nodiscard]] std::unique_ptr<FolderList> makeFolderList();

/// `figures` of the user's own history add what could not be read; of the example there are none.
[[nodiscard]] std::vector<LocationRow> locationRows(const HistorySnapshot& snapshot,
                                                    const HistoryFigures* figures, const Calendar& calendar);
[[nodiscard]] std::vector<DriveRow> driveRows(const HistorySnapshot& snapshot);
[[nodiscard]] std::vector<FolderRow> folderRows(std::span<const FolderSummary> folders,
                                                const HistorySnapshot& snapshot);

}  // namespace brindle
