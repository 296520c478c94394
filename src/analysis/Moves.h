#pragma once

#include "analysis/MovePairs.h"
#include "model/Change.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace brindle {

/// Where a file, or all that changed in a folder, likely went or came from.
struct FolderMove {
    bool hasLeft = false;  // went to `other`; else came from there
    FolderRef other;

    bool operator==(const FolderMove&) const = default;
};

/// Which changes of a list are likely halves of a move: what was removed in one place and added in another.
/// It is told beside the changes and adds nothing to any sum. Judged within the list: the half of a pair that
/// is not in it is not known. The list must outlive this. Any thread may read it.
class Moves {
public:
    Moves() = default;
    /// In time that grows with the number of changes and little more.
    explicit Moves(std::span<const FileChange> changes);

    [[nodiscard]] bool empty() const { return totals_.files == 0; }

    /// The other half; null where there is none. `change` is one of the list itself, not a copy.
    [[nodiscard]] const FileChange* counterpart(const FileChange& change) const;

    /// The folder of the other half; nothing where there is none.
    [[nodiscard]] std::optional<FolderMove> moveOf(const FileChange& change) const;
    /// Nothing unless all that changed in the folder and below it moved, the same way.
    [[nodiscard]] std::optional<FolderMove> moveOf(const FolderRef& folder) const;

    /// What moved, each file once.
    struct Totals {
        std::int64_t files = 0;
        std::int64_t bytes = 0;

        bool operator==(const Totals&) const = default;
    };
    [[nodiscard]] const Totals& totals() const { return totals_; }

private:
    struct ChangedFolder {
        FolderRef ref;
        bool hasMoved = true;
        bool hasLeft = false;
        FolderRef here;  // below it, and below `there`, what moved has the same path
        FolderRef there;
        const FileChange* latest = nullptr;  // of the other halves
    };

    void addFolders();
    void addWay(ChangedFolder& folder, const FileChange& change, const FileChange& other);

    std::span<const FileChange> changes_;
    std::vector<std::size_t> others_;     // by change; noPair for most; empty when nothing moved
    std::vector<ChangedFolder> folders_;  // in their order, if anything moved
    Totals totals_;
};

/// "Likely moved to Archive/Raw", "Likely moved from Archive/Raw". `place`: what the other folder is called,
/// as it is shown.
[[nodiscard]] std::string moveText(const FolderMove& move, const std::string& place);
/// What of a list likely moved, in a sentence; empty when nothing did.
[[nodiscard]] std::string moveSentence(const Moves& moves);

}  // namespace brindle
