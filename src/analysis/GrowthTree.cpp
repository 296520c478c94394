#include "analysis/GrowthTree.h"

#include "analysis/FolderTree.h"
#include "model/CheckedSum.h"

#include <algorithm>
#include <limits>

namespace brindle {
namespace {

constexpr std::int64_t smallestShare = 50;

std::int64_t netOf(const ChangeTotals& totals) {
    return totals.net();
}

class Growth {
public:
    Growth(std::span<const FileChange> changes, std::optional<std::int64_t> over)
        : tree_(groupedByFolder(changes, std::numeric_limits<std::size_t>::max()), netOf),
          most_(tree_.size()) {
        // A parent was made before its children.
        for (FolderTree::Index node = tree_.size(); --node > FolderTree::top;) {
            most_[node] = std::max(most_[node], tree_.at(node).bytes);
            auto& ofParent = most_[tree_.at(node).parent];
            ofParent = std::max(ofParent, most_[node]);
        }
        const std::int64_t most = most_[FolderTree::top];
        least_ = over ? checkedSum(*over, 1) : std::max<std::int64_t>(most / smallestShare, 1);
    }

    [[nodiscard]] std::vector<GrownFolder> roots() const { return listed(FolderTree::top).folders; }

private:
    [[nodiscard]] bool isListed(FolderTree::Index node) const { return most_[node] >= least_; }

    [[nodiscard]] GrownFolder listed(FolderTree::Index node) const {
        GrownFolder folder{.ref = tree_.at(node).ref, .net = tree_.at(node).bytes, .folders = {}};
        auto children = tree_.at(node).children;
        std::ranges::sort(children, [this](FolderTree::Index a, FolderTree::Index b) {
            return most_[a] != most_[b] ? most_[a] > most_[b] : tree_.at(a).ref < tree_.at(b).ref;
        });
        for (const FolderTree::Index child : children) {
            const std::int64_t net = tree_.at(child).bytes;
            if (isListed(child)) {
                folder.folders.push_back(listed(soleChange(child)));
            } else if (net > 0) {
                ++folder.smallerFolders;
                folder.smallerBytes = checkedSum(folder.smallerBytes, net);
            }
        }
        return folder;
    }

    /// The deepest folder that holds all that changed in this one.
    [[nodiscard]] FolderTree::Index soleChange(FolderTree::Index node) const {
        for (;;) {
            const auto& children = tree_.at(node).children;
            if (children.size() != 1 || tree_.at(children.front()).bytes != tree_.at(node).bytes) return node;
            node = children.front();
        }
    }

    FolderTree tree_;
    std::vector<std::int64_t> most_;  // by node: the most that it, or a folder below it, grew
    std::int64_t least_ = 1;          // of what is listed
};

}  // namespace

std::vector<GrownFolder> growthTree(std::span<const FileChange> changes, std::optional<std::int64_t> over) {
    return Growth(changes, over).roots();
}

}  // namespace brindle
