#include "analysis/DaySentence.h"

#include "analysis/FolderTree.h"
#include "model/CheckedSum.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace brindle {
namespace {

constexpr std::size_t mostFolders = 3;

std::int64_t bytesAdded(const ChangeTotals& totals) {
    return totals.added;
}
std::int64_t bytesFreed(const ChangeTotals& totals) {
    return totals.freed;
}
std::int64_t bytesChanged(const ChangeTotals& totals) {
    return totals.volume();
}

/// Whether the part is at least 80 % of the whole.
bool explains(std::int64_t part, std::int64_t whole) {
    return part >= whole - whole / 5;
}

class Search {
public:
    explicit Search(const FolderTree& tree) : tree_(tree), whole_(tree.at(FolderTree::top).bytes) {}

    std::vector<FolderTree::Index> folders() const {
        const FolderTree::Index trunk = deepestThatExplains(FolderTree::top);
        auto set = fewestBelow(trunk);
        if (!set.empty()) return narrowed(std::move(set));
        if (trunk == FolderTree::top) return {};
        return {trunk};
    }

private:
    [[nodiscard]] std::int64_t bytes(FolderTree::Index node) const { return tree_.at(node).bytes; }

    [[nodiscard]] FolderTree::Index deepestThatExplains(FolderTree::Index node) const {
        for (;;) {
            const auto children = tree_.childrenBySize(node);
            if (children.empty() || !explains(bytes(children.front()), whole_)) return node;
            node = children.front();
        }
    }

    /// The children suffice: any set of folders further down is explained by as few of them, or fewer.
    [[nodiscard]] std::vector<FolderTree::Index> fewestBelow(FolderTree::Index node) const {
        auto children = tree_.childrenBySize(node);
        std::int64_t sum = 0;
        for (std::size_t count = 0; count < std::min(children.size(), mostFolders); ++count) {
            sum = checkedSum(sum, bytes(children[count]));
            if (!explains(sum, whole_)) continue;
            children.resize(count + 1);
            return children;
        }
        return {};
    }

    /// Puts a child in the place of its folder, the one with which the least is lost first, as long as the
    /// set explains the change.
    [[nodiscard]] std::vector<FolderTree::Index> narrowed(std::vector<FolderTree::Index> set) const {
        for (;;) {
            std::int64_t sum = 0;
            for (const FolderTree::Index node : set) sum = checkedSum(sum, bytes(node));
            std::optional<std::size_t> place;
            std::int64_t leastLost = std::numeric_limits<std::int64_t>::max();
            for (std::size_t i = 0; i < set.size(); ++i) {
                const auto children = tree_.childrenBySize(set[i]);
                if (children.empty()) continue;
                const std::int64_t lost = bytes(set[i]) - bytes(children.front());
                if (lost >= leastLost || !explains(sum - lost, whole_)) continue;
                place = i;
                leastLost = lost;
            }
            if (!place) return set;
            set[*place] = tree_.childrenBySize(set[*place]).front();
        }
    }

    const FolderTree& tree_;
    std::int64_t whole_;
};

std::string listText(const std::vector<FolderRef>& folders, std::span<const TrackedLocation> locations) {
    std::vector<std::string> names;
    names.reserve(folders.size());
    for (const FolderRef& ref : folders) names.push_back(placeText(ref, locations));
    if (names.size() == 1) return names[0];
    if (names.size() == 2) return filled(translated("{0} and {1}"), names[0], names[1]);
    return filled(translated("{0}, {1} and {2}"), names[0], names[1], names[2]);
}

struct Told {
    std::string amount;
    ChangeMeasure measure;
};

/// What came and went; a side that is less than a twentieth of the change is not worth its words.
Told told(const ChangeTotals& totals, ChangeSource source) {
    const std::string added = byteAmount(totals.added);
    const std::string freed = byteAmount(totals.freed);
    if (source == ChangeSource::estimated) return {filled(translated("About {} came"), added), bytesAdded};
    const std::int64_t least = totals.volume() / 20;
    if (totals.freed <= least) return {filled(translated("{} came"), added), bytesAdded};
    if (totals.added <= least) return {filled(translated("{} went"), freed), bytesFreed};
    return {filled(translated("{0} came and {1} went"), added, freed), bytesChanged};
}

}  // namespace

std::string placeText(const FolderRef& ref, std::span<const TrackedLocation> locations) {
    std::string path;
    if (locations.size() > 1 || ref.components.empty()) {
        const auto location = std::ranges::find(locations, ref.locationID, &TrackedLocation::id);
        path = location != locations.end() ? location->name : translated("Removed location");
    }
    for (const std::string& component : ref.components) path += (path.empty() ? "" : "/") + component;
    return fileNameText(path);
}

Explanation explanationOf(std::span<const FolderSummary> folders, ChangeMeasure measure) {
    const FolderTree tree(folders, measure);
    Explanation explanation;
    std::int64_t explained = 0;
    for (const FolderTree::Index node : Search(tree).folders()) {
        explanation.folders.push_back(tree.at(node).ref);
        explained = checkedSum(explained, tree.at(node).bytes);
    }
    explanation.isWhole = explained == tree.at(FolderTree::top).bytes;
    return explanation;
}

std::string changeSentence(std::span<const FolderSummary> folders, std::span<const TrackedLocation> locations,
                           ChangeSource source) {
    ChangeTotals totals;
    for (const FolderSummary& folder : folders) totals += folder.totals;
    if (totals.volume() == 0) return translated("Nothing came or went.");

    const Told what = told(totals, source);
    Explanation explanation = explanationOf(folders, what.measure);
    const bool isRoot = explanation.folders.size() == 1 && explanation.folders[0].components.empty();
    // Of a single location the root says no more than the sentence itself, but for what lies directly in it.
    if (locations.size() == 1 && isRoot) {
        const auto root = std::ranges::find(folders, explanation.folders[0], &FolderSummary::ref);
        const std::int64_t inRoot = root == folders.end() ? 0 : what.measure(root->totals);
        if (!explains(inRoot, what.measure(totals))) explanation.folders.clear();
        explanation.isWhole = inRoot == what.measure(totals);
    }
    if (explanation.folders.empty())
        return filled(translated("{}, spread over several folders."), what.amount);
    return filled(
        explanation.isWhole ? translated("{0}, all of it in {1}.") : translated("{0}, most of it in {1}."),
        what.amount, listText(explanation.folders, locations));
}

std::string changeSentence(std::span<const FileChange> changes, std::span<const TrackedLocation> locations,
                           ChangeSource source) {
    return changeSentence(groupedByFolder(changes, std::numeric_limits<std::size_t>::max()), locations,
                          source);
}

}  // namespace brindle
