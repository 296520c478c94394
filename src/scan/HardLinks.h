#pragma once

#include <cstdint>
#include <unordered_set>

namespace brindle {

/// Remembers which files of one device were met, so that the disk space of a file with several names is
/// counted under the first of them only.
class HardLinks {
public:
    /// Whether this is the first name of the file that is met. A file with one name is not remembered.
    [[nodiscard]] bool isFirst(std::uint64_t inode, std::uint64_t links) {
        return links < 2 || inodes_.insert(inode).second;
    }

private:
    std::unordered_set<std::uint64_t> inodes_;
};

}  // namespace brindle
