#pragma once

#include "platform/FileDescriptor.h"
#include "platform/TreeReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

// Marks in front of the names in a listing.
inline constexpr char folderMark = 'd';
inline constexpr char fileMark = 'f';
inline constexpr char otherMark = 'o';

/// What a folder holds: of each entry its mark and its name, with "/" behind the name of a folder and NUL
/// behind all.
struct FolderListing {
    std::string names;
    std::vector<std::size_t> entries;  // where they begin in `names`, in the order of the paths below them
};

/// What the file system answered when it was asked for an entry's status.
struct StatusAnswer {
    int error = 0;  // errno; what follows tells nothing then
    std::uint32_t mode = 0;
    EntryStatus status;  // all but isDataless
};

/// A folder of a tree, as a reading comes upon it.
struct ListedFolder {
    std::uint64_t serial = 0;  // tells it from the others of its tree
    int level = 0;
    TreeEvent::Kind kind = TreeEvent::Kind::directory;  // or noStatus, or other
    int error = 0;          // of noStatus; of a directory that may be entered: why it has no listing
    bool mayEnter = false;  // it lies on the root's device and is not dataless
    EntryStatus status;
    FileNumber number;
    std::shared_ptr<const FileDescriptor> folder;  // once it was entered
    std::shared_ptr<const FolderListing> listing;
    // Of the files of the listing, at the places of their entries, when all were asked for ahead.
    std::shared_ptr<const std::vector<StatusAnswer>> answers;
};

/// The folders of one tree in the order in which a reading comes upon them. Those that lie in a folder come
/// next once it was entered, and else not at all.
class FolderSequence {
public:
    virtual ~FolderSequence() = default;

    /// False at the end.
    [[nodiscard]] virtual bool next(ListedFolder& folder) = 0;

    /// Opens and lists the folder that came last, unless that was done ahead.
    virtual void enter(ListedFolder& folder) = 0;

    /// Nothing below this folder is asked for. Some of it may come nevertheless.
    virtual void passOver(const ListedFolder& folder) = 0;
};

}  // namespace brindle
