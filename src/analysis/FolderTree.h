#pragma once

#include "model/FolderSummary.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// Folders with everything below them added up. Node 0 stands above the roots of all locations, whose nodes
/// are its children.
class FolderTree {
public:
    using Index = std::size_t;
    static constexpr Index top = 0;

    struct Node {
        FolderRef ref;
        Index parent = top;
        std::vector<Index> children;
        std::int64_t bytes = 0;  // of the folder and everything below it
    };

    /// `measure`: the bytes of a folder's totals that count; folders for which it is 0 are left out.
    FolderTree(std::span<const FolderSummary> folders,
               const std::function<std::int64_t(const ChangeTotals&)>& measure);

    [[nodiscard]] std::size_t size() const { return nodes_.size(); }
    [[nodiscard]] const Node& at(Index node) const { return nodes_[node]; }

    /// The children, most bytes first; equal ones in the order of their folders.
    [[nodiscard]] std::vector<Index> childrenBySize(Index node) const;

private:
    std::vector<Node> nodes_{Node{}};
};

}  // namespace brindle
