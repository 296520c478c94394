#pragma once

#include "model/PathSet.h"
#include "platform/linux/FolderSequence.h"
#include "platform/linux/FolderTrail.h"

#include <array>
#include <dirent.h>
#include <functional>
#include <sys/types.h>

namespace brindle {

/// Reads the next part of an open folder's listing, as getdents64() does. Tests replace it.
using ListingCall = std::function<ssize_t(int folder, void* buffer, std::size_t size)>;

/// Asks for the status of an entry of an open folder (statx(2)); a symbolic link is not followed.
[[nodiscard]] StatusAnswer askForStatus(int folder, const char* name);

/// Finds, opens and lists the folders of a tree, each when it is asked for.
class FolderLister final : public FolderSequence {
public:
    /// `elsewhere`: the folders below the root, by their relative paths, that nothing is to touch.
    FolderLister(std::string root, DatalessTest isDataless, ListingCall readListing, PathSet elsewhere = {});

    [[nodiscard]] bool next(ListedFolder& folder) override;
    void enter(ListedFolder& folder) override;
    void passOver(const ListedFolder& folder) override { trail_.leave(folder.serial); }

private:
    void lookAt(ListedFolder& folder, int parent, const char* name, int flags);
    [[nodiscard]] FileDescriptor open() const;
    [[nodiscard]] int list(int folder, FolderListing& listing);
    void keep(int folder, unsigned char type, const char* name, FolderListing& listing) const;
    [[nodiscard]] char markOfUnknown(int folder, const char* name) const;

    std::string root_;
    DatalessTest isDataless_;
    ListingCall readListing_;
    PathSet elsewhere_;
    FolderTrail trail_;
    std::uint64_t serial_ = 0;
    alignas(dirent64) std::array<char, 32768> part_{};
};

}  // namespace brindle
