#pragma once

#include "export/StorageStatement.h"
#include "model/Calendar.h"
#include "model/Change.h"
#include "model/Location.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace brindle {

/// Makes the rows of one statement. What many changes in a row share (their day, their time, their folder) is
/// worked out once; which changes come in which order makes no difference to the rows.
class StatementRows {
public:
    /// `locations`: those that are known, under which changes are looked up. Times are told in the zone of
    /// `calendar`.
    StatementRows(const std::vector<TrackedLocation>& locations, bool isExample, Calendar calendar);

    /// The row of a change, valid until the next one is made or the change goes.
    [[nodiscard]] const storageStatement::Row& row(const FileChange& change);

private:
    void enterFolder(const FileChange& change);

    std::unordered_map<LocationID, TrackedLocation> locations_;
    bool isExample_;
    Calendar calendar_;

    LocalDay day_;
    std::string dayText_;
    UnixTime observedAt_;
    std::string timeText_;
    FolderRef folder_;
    const TrackedLocation* location_ = nullptr;  // of folder_; null when it is not known
    std::string folderPath_;
    std::string path_;  // begins with the folder's path and the "/" behind it
    std::size_t nameBegin_ = 0;
    std::string fileText_;
    storageStatement::Row row_;
};

}  // namespace brindle
