#include "export/StatementRows.h"

#include <limits>

namespace brindle {
namespace {

constexpr std::string_view actionText(ChangeAction action) {
    switch (action) {
        case ChangeAction::added:
            return "Added";
        case ChangeAction::grew:
            return "Grew";
        case ChangeAction::shrank:
            return "Shrank";
        case ChangeAction::removed:
            return "Removed";
    }
    return {};
}

constexpr std::string_view sourceText(ChangeSource source, bool isExample) {
    if (source == ChangeSource::measured) return isExample ? "Example" : "Measured";
    return isExample ? "Example estimate" : "Estimated";
}

/// Puts a "/" behind a path, but none behind one that ends with one, or that is empty.
void endWithSlash(std::string& path) {
    if (!path.empty() && !path.ends_with('/')) path += '/';
}

}  // namespace

StatementRows::StatementRows(const std::vector<TrackedLocation>& locations, bool isExample, Calendar calendar)
    : isExample_(isExample),
      calendar_(std::move(calendar)),
      dayText_(day_.text()),
      observedAt_(std::numeric_limits<UnixTime>::quiet_NaN()) {
    for (const TrackedLocation& location : locations) locations_[location.id] = location;
    enterFolder({});
}

const storageStatement::Row& StatementRows::row(const FileChange& change) {
    if (change.day != day_) {
        day_ = change.day;
        dayText_ = day_.text();
    }
    const bool isMeasured = change.source == ChangeSource::measured;
    if (isMeasured && change.observedAt != observedAt_) {
        observedAt_ = change.observedAt;
        timeText_ = calendar_.isoTime(observedAt_);
    }
    if (change.locationID != folder_.locationID || change.folder != folder_.components) enterFolder(change);

    const bool isSingleFile = change.fileCount < 2 && !change.name.empty();
    std::string_view path = folderPath_;
    if (isSingleFile) {
        path_.replace(nameBegin_, std::string::npos, change.name);
        path = path_;
    } else {
        fileText_ = displayName(change);
    }
    row_ = {dayText_,
            isMeasured ? std::string_view(timeText_) : std::string_view(),
            isSingleFile ? change.name : fileText_,
            folderPath_,
            path,
            change.byteDelta,
            actionText(change.action),
            location_ != nullptr ? std::string_view(location_->name) : "Removed location",
            sourceText(change.source, isExample_),
            change.fileCount};
    return row_;
}

void StatementRows::enterFolder(const FileChange& change) {
    folder_ = {change.locationID, change.folder};
    const auto known = locations_.find(change.locationID);
    location_ = known != locations_.end() ? &known->second : nullptr;
    folderPath_ = location_ != nullptr ? location_->path : "";
    for (const std::string& component : change.folder) {
        endWithSlash(folderPath_);
        folderPath_ += component;
    }
    path_ = folderPath_;
    endWithSlash(path_);
    nameBegin_ = path_.size();
}

}  // namespace brindle
