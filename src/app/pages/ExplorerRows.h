#pragma once

#include "analysis/Moves.h"
#include "app/ListModel.h"
#include "model/Calendar.h"
#include "model/Change.h"
#include "model/FolderSummary.h"
#include "model/Location.h"

#include <QString>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// A folder or a file of an explorer, ready to be shown. Its amounts stand in two columns: what a folder or a
/// file added in one, what it freed in the other; a column without an amount is empty.
struct ExplorerRow {
    std::string key;
    FolderRef folder;  // the folder itself, or the one that the file lies in
    bool isFolder = false;
    bool isEstimated = false;
    QString name;
    QString description;  // "1,204 files"; "2:05 PM · Footage/Raw · Likely moved to Archive/Raw"
    QString verb;         // of a file: "Grew"
    QString added;
    QString freed;
    double addedShare = 0;  // of the largest volume of change among the folders, 0 to 1
    double freedShare = 0;
    QString hint;    // the path from the location down, the amounts to the byte, and what likely moved
    QString spoken;  // all of it in one line, for those who hear it

    bool operator==(const ExplorerRow&) const = default;
};

using ExplorerList = ListModel<ExplorerRow, std::string>;

[[nodiscard]] std::unique_ptr<ExplorerList> makeExplorerList();

/// Makes the rows of one explorer.
class ExplorerRowMaker {
public:
    /// `folder`: the one that the rows are listed in; absent at the top. `hasDays`: whether the changes are
    /// of several days, so that a file tells its own. `moves`: of the recorded ones.
    ExplorerRowMaker(const std::vector<TrackedLocation>& locations, const std::optional<FolderRef>& folder,
                     const Calendar& calendar, bool hasDays, const Moves& moves)
        : locations_(locations), folder_(folder), calendar_(calendar), hasDays_(hasDays), moves_(moves) {}

    [[nodiscard]] ExplorerRow row(const FolderSummary& summary, std::int64_t largestVolume,
                                  ChangeSource source) const;
    [[nodiscard]] ExplorerRow row(const FileChange& change);

private:
    void tellMove(ExplorerRow& row, const std::optional<FolderMove>& move) const;
    [[nodiscard]] QString timeText(const FileChange& change);
    [[nodiscard]] QString placeText(const FileChange& change) const;

    const std::vector<TrackedLocation>& locations_;
    const std::optional<FolderRef>& folder_;
    const Calendar& calendar_;
    bool hasDays_;
    const Moves& moves_;
    std::map<UnixTime, QString> times_;  // a check finds all its changes at one time
};

/// A location's name as it is shown.
[[nodiscard]] std::string shownLocationName(const std::vector<TrackedLocation>& locations,
                                            const LocationID& id);

}  // namespace brindle
