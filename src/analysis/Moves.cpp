#include "analysis/Moves.h"

#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <unordered_map>

namespace brindle {
namespace {

bool liesIn(const FolderRef& folder, const FolderRef& above) {
    return folder.locationID == above.locationID && folder.components.size() >= above.components.size() &&
           std::equal(above.components.begin(), above.components.end(), folder.components.begin());
}

/// Where `folder`, which lies in `above`, would lie in `other`.
FolderRef transferred(const FolderRef& folder, const FolderRef& above, const FolderRef& other) {
    std::vector<std::string> components(other.components.begin(), other.components.end());
    components.insert(components.end(),
                      folder.components.begin() + static_cast<std::ptrdiff_t>(above.components.size()),
                      folder.components.end());
    return {other.locationID, std::move(components)};
}

}  // namespace

Moves::Moves(std::span<const FileChange> changes) : changes_(changes), others_(movePairs(changes)) {
    if (others_.empty()) return;
    for (std::size_t i = 0; i < changes.size(); ++i)
        if (others_[i] != noPair && changes[i].byteDelta > 0) {
            ++totals_.files;
            totals_.bytes += changes[i].byteDelta;
        }
    addFolders();
}

const FileChange* Moves::counterpart(const FileChange& change) const {
    if (others_.empty()) return nullptr;
    const std::size_t other = others_[static_cast<std::size_t>(&change - changes_.data())];
    return other == noPair ? nullptr : &changes_[other];
}

std::optional<FolderMove> Moves::moveOf(const FileChange& change) const {
    const FileChange* other = counterpart(change);
    if (other == nullptr) return {};
    return FolderMove{.hasLeft = change.byteDelta < 0, .other = {other->locationID, other->folder}};
}

void Moves::addFolders() {
    // Equal folders that do not share their path stand beside each other in the end.
    std::unordered_map<const void*, std::vector<std::size_t>> known;
    std::size_t last = noPair;
    const auto folderOf = [&](const FileChange& change) -> ChangedFolder& {
        const auto isThat = [&](std::size_t folder) {
            const FolderRef& ref = folders_[folder].ref;
            return ref.components.identity() == change.folder.identity() &&
                   ref.locationID == change.locationID;
        };
        if (last != noPair && isThat(last)) return folders_[last];
        auto& candidates = known[change.folder.identity()];
        const auto found = std::ranges::find_if(candidates, isThat);
        last = found == candidates.end() ? folders_.size() : *found;
        if (found == candidates.end()) {
            candidates.push_back(last);
            folders_.push_back({.ref = {change.locationID, change.folder}, .here = {}, .there = {}});
        }
        return folders_[last];
    };
    for (const FileChange& change : changes_) {
        ChangedFolder& folder = folderOf(change);
        if (!folder.hasMoved) continue;
        const FileChange* other = counterpart(change);
        if (other == nullptr)
            folder.hasMoved = false;
        else
            addWay(folder, change, *other);
    }
    std::ranges::sort(folders_, {}, &ChangedFolder::ref);
}

/// Of another way than the one before, the folder has not moved as a whole.
void Moves::addWay(ChangedFolder& folder, const FileChange& change, const FileChange& other) {
    const bool hasLeft = change.byteDelta < 0;
    // Most files of a folder went where the one before them went.
    if (folder.latest != nullptr && folder.hasLeft == hasLeft &&
        folder.latest->locationID == other.locationID &&
        folder.latest->folder.identity() == other.folder.identity())
        return;
    const std::size_t shared = sharedEnd(change.folder, other.folder);
    const FolderRef here{change.locationID, change.folder.first(change.folder.size() - shared)};
    const FolderRef there{other.locationID, other.folder.first(other.folder.size() - shared)};
    if (folder.latest == nullptr) {
        folder.hasLeft = hasLeft;
        folder.here = here;
        folder.there = there;
    } else if (folder.hasLeft != hasLeft || folder.here != here || folder.there != there) {
        folder.hasMoved = false;
    }
    folder.latest = &other;
}

std::optional<FolderMove> Moves::moveOf(const FolderRef& folder) const {
    const auto first = std::ranges::lower_bound(folders_, folder, {}, &ChangedFolder::ref);
    if (first == folders_.end() || !liesIn(first->ref, folder)) return {};
    for (auto inside = first; inside != folders_.end() && liesIn(inside->ref, folder); ++inside)
        if (!inside->hasMoved || inside->hasLeft != first->hasLeft || inside->here != first->here ||
            inside->there != first->there)
            return {};
    if (!liesIn(folder, first->here)) return {};
    return FolderMove{.hasLeft = first->hasLeft, .other = transferred(folder, first->here, first->there)};
}

std::string moveText(const FolderMove& move, const std::string& place) {
    return filled(move.hasLeft ? translated("Likely moved to {}") : translated("Likely moved from {}"),
                  place);
}

std::string moveSentence(const Moves& moves) {
    if (moves.empty()) return {};
    const auto& [files, bytes] = moves.totals();
    return filled(
        translatedCount(
            "{0} in {1} file likely moved: it counts as freed in one place and as added in another.",
            "{0} in {1} files likely moved: they count as freed in one place and as added in another.",
            files),
        byteAmount(bytes), groupedNumber(files));
}

}  // namespace brindle
