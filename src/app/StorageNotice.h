#pragma once

#include "model/Calendar.h"
#include "model/HistorySource.h"
#include "settings/ToldNotices.h"

#include <map>
#include <optional>
#include <string>

namespace brindle {

/// Something about the disk space that the user is told of outside the window. Plain text, translated.
struct StorageNotice {
    std::string subject;  // under which it is remembered as told
    std::string title;
    std::string text;
    LocalDay day;
    std::optional<FolderRef> folder;  // that grew; absent: the drives and locations explain it

    bool operator==(const StorageNotice&) const = default;
};

/// Finds what the user is to be told of a history: at most one thing a day, the most pressing first.
///
/// 1. A drive that will be full within two weeks, as its forecast says; again after a week.
/// 2. Growth that is unusual for a folder (see unusualGrowth()): a folder that changes are credited to, its
///    days those of its location's checks after the first. What likely moved within it or into it is no
///    growth. Of several folders the one that grew most. Not after four days without a check or more, when a
///    day's changes are those of many.
/// 3. A location that cannot be checked, whose last check was a week ago or more; once.
///
/// Used by one thread at a time.
class NoticeFinder {
public:
    /// Reads for as long as that takes. Throws the source's error. `snapshot` is the source's own.
    [[nodiscard]] std::optional<StorageNotice> find(HistorySource& source, const HistorySnapshot& snapshot,
                                                    const ToldNotices& told, const Calendar& calendar);

private:
    using Growth = std::map<FolderRef, std::int64_t>;  // net, by the folder that it is credited to

    [[nodiscard]] std::optional<StorageNotice> unusual(HistorySource& source, const HistorySnapshot& snapshot,
                                                       const Calendar& calendar);
    [[nodiscard]] std::optional<std::int64_t> judged(const FolderRef& folder, std::int64_t growth,
                                                     HistorySource& source, const HistorySnapshot& snapshot,
                                                     const Calendar& calendar);
    [[nodiscard]] const Growth& growthOn(const LocalDay& day, HistorySource& source);

    std::map<LocalDay, Growth> past_;  // of days that are over, read once
};

}  // namespace brindle
