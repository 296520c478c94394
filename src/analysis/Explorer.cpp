#include "analysis/Explorer.h"

#include "analysis/ExplorerOrder.h"
#include "model/Packages.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace brindle {
namespace {

using Changes = std::span<const FileChange* const>;

/// What `ask` answers for a folder's path, asked once for each folder: thousands of changes lie in one,
/// mostly one after the other. Lives no longer than the changes whose folders it is asked about.
template <class Ask>
class OncePerFolder {
public:
    explicit OncePerFolder(Ask ask) : ask_(std::move(ask)) {}

    const auto& operator()(const FolderPath& folder) {
        if (last_ == nullptr || last_->first != folder.identity()) {
            auto known = known_.find(folder.identity());
            if (known == known_.end()) known = known_.emplace(folder.identity(), ask_(folder)).first;
            last_ = &*known;
        }
        return last_->second;
    }

private:
    using Known = std::unordered_map<const void*, std::invoke_result_t<Ask, const FolderPath&>>;

    Ask ask_;
    Known known_;
    const typename Known::value_type* last_ = nullptr;
};

bool liesIn(const FolderPath& path, const FolderPath& folder) {
    return path.size() >= folder.size() && std::equal(folder.begin(), folder.end(), path.begin());
}

FolderPath child(const FolderPath& folder, std::string_view name) {
    std::vector<std::string> components(folder.begin(), folder.end());
    components.emplace_back(name);
    return components;
}

/// Without their order and the level's totals.
ExplorerLevel locationsOf(Changes changes) {
    std::unordered_map<LocationID, ChangeTotals> totals;
    std::pair<const LocationID, ChangeTotals>* last = nullptr;
    for (const FileChange* change : changes) {
        if (last == nullptr || last->first != change->locationID)
            last = &*totals.try_emplace(change->locationID).first;
        last->second.add(*change);
    }
    ExplorerLevel level;
    for (const auto& [location, sums] : totals) level.folders.push_back({{location, {}}, sums});
    return level;
}

/// Where in a level a change stands.
struct Place {
    bool isInside = false;
    ChangeTotals* child = nullptr;  // absent: a file of the level's own
};

/// Without the order of folders and the folders' part of the level's totals.
ExplorerLevel contentsOf(const FolderRef& folder, Changes changes) {
    const std::size_t depth = folder.components.size();
    std::unordered_map<std::string_view, ChangeTotals> children;
    OncePerFolder placeOf([&](const FolderPath& path) -> Place {
        if (!liesIn(path, folder.components)) return {};
        if (creditedDepth({path.begin(), path.end()}, depth + 1) <= depth) return {.isInside = true};
        return {.isInside = true, .child = &children[path.begin()[static_cast<std::ptrdiff_t>(depth)]]};
    });
    ExplorerLevel level;
    for (const FileChange* change : changes) {
        if (change->locationID != folder.locationID) continue;
        const Place place = placeOf(change->folder);
        if (!place.isInside) continue;
        if (place.child != nullptr) {
            place.child->add(*change);
        } else {
            level.totals.add(*change);
            level.files.push_back(change);
        }
    }
    for (const auto& [name, sums] : children)
        level.folders.push_back({{folder.locationID, child(folder.components, name)}, sums});
    return level;
}

}  // namespace

ChosenChanges filtered(std::span<const FileChange> changes, DirectionFilter direction,
                       const TextSearch& search) {
    OncePerFolder hasSearch([&](const FolderPath& folder) {
        return std::ranges::any_of(folder, [&](const std::string& name) { return search.isIn(name); });
    });
    ChosenChanges kept;
    kept.reserve(changes.size());
    for (const FileChange& change : changes)
        if (passes(direction, change.byteDelta) &&
            (search.isEmpty() || hasSearch(change.folder) || search.isIn(change.name)))
            kept.push_back(&change);
    return kept;
}

ExplorerLevel levelOf(Changes changes, const std::optional<FolderRef>& folder) {
    ExplorerLevel level = folder ? contentsOf(*folder, changes) : locationsOf(changes);
    for (const FolderSummary& summary : level.folders) level.totals += summary.totals;
    const std::size_t all = level.folders.size();
    level.folders = largestFirst(std::move(level.folders), all);
    sortFiles(level.files, FileSort::largest, {});
    return level;
}

ChosenChanges filesIn(Changes changes, const std::optional<FolderRef>& folder, FileSort sort,
                      const std::string& locale) {
    ChosenChanges inside;
    inside.reserve(changes.size());
    if (folder) {
        OncePerFolder isInside([&](const FolderPath& path) { return liesIn(path, folder->components); });
        std::ranges::copy_if(changes, std::back_inserter(inside), [&](const FileChange* change) {
            return change->locationID == folder->locationID && isInside(change->folder);
        });
    } else {
        inside.assign(changes.begin(), changes.end());
    }
    sortFiles(inside, sort, locale);
    return inside;
}

ChangeTotals totalsOf(Changes changes) {
    ChangeTotals totals;
    for (const FileChange* change : changes) totals.add(*change);
    return totals;
}

FilePage filePage(Changes files, int number) {
    const std::size_t pages = files.empty() ? 1 : (files.size() - 1) / filesOfPage + 1;
    const std::size_t shown = std::min(static_cast<std::size_t>(std::max(number, 0)), pages - 1);
    const std::size_t begin = shown * filesOfPage;
    return {files.subspan(begin, std::min(filesOfPage, files.size() - begin)), shown, pages};
}

}  // namespace brindle
