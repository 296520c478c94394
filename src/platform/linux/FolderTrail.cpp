#include "platform/linux/FolderTrail.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <utility>

namespace brindle {
namespace {

// Beside the root, as many of the innermost folders stay open. Few trees are deeper, and those are read with
// a few more calls a folder.
constexpr std::size_t openFolderLimit = 16;

}  // namespace

FileNumber numberOf(const FileDescriptor& folder) {
    struct stat status {};
    if (::fstat(folder.get(), &status) != 0) return {};
    return {status.st_dev, status.st_ino};
}

char FolderTrail::nextMark() const {
    const Level& level = levels_.back();
    const FolderListing& listing = *level.listing;
    return level.nextEntry == listing.entries.size() ? '\0' : listing.names[listing.entries[level.nextEntry]];
}

const StatusAnswer* FolderTrail::answer() const {
    const Level& level = levels_.back();
    return level.answers ? &(*level.answers)[level.nextEntry - 1] : nullptr;
}

void FolderTrail::take() {
    Level& level = levels_.back();
    const char* entry = level.listing->names.data() + level.listing->entries[level.nextEntry++];
    path_.resize(level.prefixLength);
    path_.append(entry + 1);
    if (*entry == folderMark) path_.pop_back();
}

void FolderTrail::enter(const ListedFolder& folder) {
    if (!levels_.empty()) path_ += '/';
    levels_.push_back({.serial = folder.serial,
                       .number = folder.number,
                       .folder = folder.folder,
                       .listing = folder.listing,
                       .answers = folder.answers,
                       .prefixLength = path_.size()});
    if (levels_.size() > openFolderLimit + 1) levels_[levels_.size() - 1 - openFolderLimit].folder.reset();
}

int FolderTrail::leave() {
    const Level left = std::move(levels_.back());
    levels_.pop_back();
    path_.resize(left.prefixLength == 0 ? 0 : left.prefixLength - 1);
    if (!levels_.empty() && !levels_.back().folder) returnTo(levels_.back(), left);
    return left.error;
}

void FolderTrail::leave(std::uint64_t serial) {
    const auto found = std::ranges::find(levels_, serial, &Level::serial);
    for (auto count = levels_.end() - found; count > 0; --count) leave();
}

bool FolderTrail::contains(FileNumber number) const {
    return std::ranges::find(levels_, number, &Level::number) != levels_.end();
}

/// Opens a folder again, from the one below it. Where that fails its remaining entries are given up.
void FolderTrail::returnTo(Level& parent, const Level& child) {
    const int from = child.folder ? child.folder->get() : -1;  // it may have been lost itself
    FileDescriptor folder(::openat(from, "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder && numberOf(folder) == parent.number) {
        parent.folder = std::make_shared<FileDescriptor>(std::move(folder));
    } else if (const std::size_t end = parent.listing->entries.size(); parent.nextEntry < end) {
        parent.error = folder ? ESTALE : errno;
        parent.nextEntry = end;
    }
}

}  // namespace brindle
