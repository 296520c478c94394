#pragma once

#include "platform/linux/FolderSequence.h"

#include <sys/stat.h>

namespace brindle {

/// The number of an open folder; 0 and 0, which no folder has, when it cannot be told.
[[nodiscard]] FileNumber numberOf(const FileDescriptor& folder);

/// The folders from the root of a reading to the one that it is in, how far it has come in each, and the path
/// of its current entry. Beside the root, the innermost ones stay open: at most 17 however deep it is.
class FolderTrail {
public:
    /// Nothing was entered yet, or all of it was left again.
    [[nodiscard]] bool isEmpty() const { return levels_.empty(); }

    /// The level of the current entry.
    [[nodiscard]] int level() const { return static_cast<int>(levels_.size()); }

    /// Of the current entry, below the root.
    [[nodiscard]] const std::string& path() const { return path_; }

    /// The current entry's name as the file system has it: the end of path().
    [[nodiscard]] const char* name() const { return path_.c_str() + levels_.back().prefixLength; }

    /// The folder of the current entry.
    [[nodiscard]] int folder() const { return levels_.back().folder->get(); }

    /// What was answered for the current entry, a file, when its folder's files were asked for ahead; or
    /// null.
    [[nodiscard]] const StatusAnswer* answer() const;

    /// The mark of the entry that comes next in the innermost folder; 0 when none does.
    [[nodiscard]] char nextMark() const;

    /// Makes it the current one, or passes it over.
    void take();
    void pass() { ++levels_.back().nextEntry; }

    /// Enters the current entry, or the root.
    void enter(const ListedFolder& folder);

    /// Leaves the innermost folder, which becomes the current entry, and opens the one above again where that
    /// was given up. Gives the error for which some of the folder was not read, or 0.
    int leave();

    /// Leaves this folder and all below it, when the reading is in it.
    void leave(std::uint64_t serial);

    /// Whether the folder is the one of a level, which only a mount can bring about.
    [[nodiscard]] bool contains(FileNumber number) const;

    [[nodiscard]] FileNumber root() const { return levels_.front().number; }

private:
    struct Level {
        std::uint64_t serial = 0;
        FileNumber number;
        std::shared_ptr<const FileDescriptor> folder;  // given up while the reading is far below
        std::shared_ptr<const FolderListing> listing;
        std::shared_ptr<const std::vector<StatusAnswer>> answers;
        std::size_t prefixLength = 0;  // of path_, up to where the names of its entries begin
        std::size_t nextEntry = 0;
        int error = 0;  // why the rest of it cannot be read
    };

    static void returnTo(Level& parent, const Level& child);

    std::vector<Level> levels_;
    std::string path_;
};

}  // namespace brindle
