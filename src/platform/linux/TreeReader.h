#pragma once

#include "model/PathSet.h"
#include "platform/FileDescriptor.h"
#include "platform/TreeReader.h"

#include <array>
#include <cstddef>
#include <dirent.h>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>

namespace brindle {

/// Reads the next part of an open folder's listing, as getdents64() does. Tests replace it.
using ListingCall = std::function<ssize_t(int folder, void* buffer, std::size_t size)>;

/// The tree reader of Linux: one statx an entry; the listings of the folders on the way to the current entry
/// lie one behind the other in the same two buffers; at most 18 folders are open however deep it is.
class LinuxTreeReader final : public TreeReader {
public:
    /// `elsewhere`: the folders below the root, by their relative paths, that nothing is to touch.
    LinuxTreeReader(std::string root, DatalessTest isDataless, ListingCall readListing,
                    PathSet elsewhere = {});

    [[nodiscard]] const TreeEvent* next() override;
    void skip() override { mayEnter_ = false; }

private:
    /// A folder that was entered.
    struct Level {
        FileDescriptor folder;  // given up while the reading is far below
        FileNumber number;
        std::size_t prefixLength = 0;  // of path_, up to where the names of its entries begin
        std::size_t namesBegin = 0;
        std::size_t entriesBegin = 0;
        std::size_t nextEntry = 0;
        int error = 0;  // why the rest of it cannot be read
    };

    [[nodiscard]] const TreeEvent* visitRoot();
    [[nodiscard]] const TreeEvent* visitEntry(Level& level);
    [[nodiscard]] const TreeEvent* enterFolder();
    [[nodiscard]] const TreeEvent* leaveFolder();

    const TreeEvent* tell(TreeEvent::Kind kind, int error = 0);
    const TreeEvent* tell(TreeEvent::Kind kind, const struct statx& status);
    const TreeEvent* tellFolder(const struct statx& status, const char* name);

    [[nodiscard]] FileDescriptor openFolder() const;
    [[nodiscard]] int list(int folder);
    void keep(int folder, unsigned char type, const char* name);
    [[nodiscard]] char markOfUnknown(int folder, const char* name) const;
    void sort(const Level& level);
    void returnTo(Level& parent, const Level& child);
    [[nodiscard]] bool isOnTheWay(FileNumber number) const;

    std::string root_;
    DatalessTest isDataless_;
    ListingCall readListing_;
    PathSet elsewhere_;

    TreeEvent event_;
    std::string path_;  // of the current entry

    std::vector<Level> levels_;         // from the root to the folder whose entries are being visited
    std::string names_;                 // of all levels: see keep()
    std::vector<std::size_t> entries_;  // of all levels, in order within each: where in names_ they begin

    bool hasBegun_ = false;
    bool isAtFolder_ = false;  // the last event was a directory, whose contents come next
    bool mayEnter_ = false;    // it lies on the root's device, is not dataless and was not skipped
    const char* folderName_ = nullptr;
    FileNumber folderNumber_;

    alignas(dirent64) std::array<char, 32768> listing_{};
};

}  // namespace brindle
