#include "analysis/FolderTree.h"

#include "model/CheckedSum.h"

#include <algorithm>
#include <unordered_map>

namespace brindle {

FolderTree::FolderTree(std::span<const FolderSummary> folders,
                       const std::function<std::int64_t(const ChangeTotals&)>& measure) {
    std::unordered_map<FolderRef, Index> known;
    const auto nodeOf = [&](const FolderRef& ref, const auto& nodeOfParent) -> Index {
        if (const auto found = known.find(ref); found != known.end()) return found->second;
        const Index parent =
            ref.components.empty()
                ? top
                : nodeOfParent({ref.locationID, ref.components.first(ref.components.size() - 1)},
                               nodeOfParent);
        const Index node = nodes_.size();
        nodes_.push_back({.ref = ref, .parent = parent, .children = {}});
        nodes_[parent].children.push_back(node);
        known.emplace(ref, node);
        return node;
    };
    for (const FolderSummary& folder : folders)
        if (const std::int64_t bytes = measure(folder.totals); bytes != 0) {
            Node& node = nodes_[nodeOf(folder.ref, nodeOf)];
            node.bytes = checkedSum(node.bytes, bytes);
        }
    // A parent was made before its children.
    for (Index node = nodes_.size(); --node > top;) {
        Node& parent = nodes_[nodes_[node].parent];
        parent.bytes = checkedSum(parent.bytes, nodes_[node].bytes);
    }
}

std::vector<FolderTree::Index> FolderTree::childrenBySize(Index node) const {
    std::vector<Index> children = nodes_[node].children;
    std::ranges::sort(children, [this](Index a, Index b) {
        return nodes_[a].bytes != nodes_[b].bytes ? nodes_[a].bytes > nodes_[b].bytes
                                                  : nodes_[a].ref < nodes_[b].ref;
    });
    return children;
}

}  // namespace brindle
