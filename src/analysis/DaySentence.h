#pragma once

#include "model/FolderSummary.h"
#include "model/Location.h"

#include <span>
#include <string>
#include <vector>

namespace brindle {

/// Where a change lies. The sum of its folders is at least 80 % of the change.
struct Explanation {
    std::vector<FolderRef> folders;  // largest first, none inside another; empty: spread too widely to say
    bool isWhole = false;            // nothing changed anywhere else

    bool operator==(const Explanation&) const = default;
};

/// The bytes of a folder that count towards a change: what was added, what was freed, or both.
using ChangeMeasure = std::int64_t (*)(const ChangeTotals&);

/// Names the smallest set of folders that explains at least 80 % of a change: the fewest, and then each as
/// far down as the set still explains it. A folder that holds it all and only passes it on to the folders
/// below is no answer: the set is sought below the deepest folder that explains the change alone, and that
/// folder is named only where more than three below it would be needed.
/// `folders`: every folder with what changed directly in it, or in what is credited to it; each once.
[[nodiscard]] Explanation explanationOf(std::span<const FolderSummary> folders, ChangeMeasure measure);

/// A folder as a person knows it: "Studio SSD/Footage". The location's name is left out where there is only
/// one, but for its root.
[[nodiscard]] std::string placeText(const FolderRef& ref, std::span<const TrackedLocation> locations);

/// A day's or a period's change in one sentence: "12.4 GB came, most of it in Movies/Raw and
/// Library/Caches." Names the location as well when `locations` are several. `source`: what the figures are;
/// the two kinds are never mixed.
[[nodiscard]] std::string changeSentence(std::span<const FolderSummary> folders,
                                         std::span<const TrackedLocation> locations, ChangeSource source);
[[nodiscard]] std::string changeSentence(std::span<const FileChange> changes,
                                         std::span<const TrackedLocation> locations, ChangeSource source);

}  // namespace brindle
