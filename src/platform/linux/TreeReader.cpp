#include "platform/linux/TreeReader.h"

#include "platform/Mounts.h"
#include "platform/Paths.h"
#include "platform/linux/FolderLister.h"
#include "platform/linux/ListAhead.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace brindle {
namespace {

/// Where below the root another computer's folders are mounted.
PathSet foldersElsewhere(const std::string& root) {
    const MountTable table = MountTable::current();
    PathSet folders;
    for (const Mount& mount : table.mounts()) {
        if (isLocal(mount) || mount.target == root || !isAtOrBelow(mount.target, root)) continue;
        // A local file system may have been mounted over it.
        if (!isLocal(*table.holding(mount.target)))
            folders.insert(mount.target.substr(root == "/" ? 1 : root.size() + 1));
    }
    return folders;
}

class LinuxTreeSource final : public TreeSource {
public:
    LinuxTreeSource(DatalessTest isDataless, bool isAhead)
        : isDataless_(std::move(isDataless)), isAhead_(isAhead) {}

    [[nodiscard]] FileNumber identify(const std::string& root) const override {
        struct stat status {};
        if (::stat(root.c_str(), &status) != 0) throw std::system_error(errno, std::generic_category(), root);
        if (!S_ISDIR(status.st_mode)) throw std::system_error(ENOTDIR, std::generic_category(), root);
        return {status.st_dev, status.st_ino};
    }

    // The first part tells whether the folder can be read. Reading it to its end would double the work on a
    // folder of a million files, and the reader tells of a failure further on all the same.
    void list(const std::string& root) const override {
        alignas(dirent64) std::array<char, 8192> part{};
        const FileDescriptor folder(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!folder || ::getdents64(folder.get(), part.data(), part.size()) < 0)
            throw std::system_error(errno, std::generic_category(), root);
    }

    [[nodiscard]] std::unique_ptr<TreeReader> open(const std::string& root) const override {
        std::unique_ptr<FolderSequence> folders =
            std::make_unique<FolderLister>(root, isDataless_, ::getdents64, foldersElsewhere(root));
        if (isAhead_) folders = std::make_unique<ListAhead>(std::move(folders));
        return std::make_unique<LinuxTreeReader>(std::move(folders), isDataless_);
    }

private:
    DatalessTest isDataless_;
    bool isAhead_;
};

}  // namespace

bool isDatalessHere(const TreeEvent& entry) {
    return entry.kind == TreeEvent::Kind::directory && (entry.status.attributes & STATX_ATTR_AUTOMOUNT) != 0;
}

std::unique_ptr<TreeSource> makeTreeSource(DatalessTest isDataless, bool isAhead) {
    return std::make_unique<LinuxTreeSource>(std::move(isDataless), isAhead);
}

LinuxTreeReader::LinuxTreeReader(std::unique_ptr<FolderSequence> folders, DatalessTest isDataless)
    : folders_(std::move(folders)), isDataless_(std::move(isDataless)) {}

const TreeEvent* LinuxTreeReader::next() {
    if (!std::exchange(hasBegun_, true)) return visitFolder();
    if (std::exchange(isAtFolder_, false)) {
        if (const TreeEvent* event = enterFolder()) return event;
    }
    while (!trail_.isEmpty()) {
        const char mark = trail_.nextMark();
        if (mark == '\0') return leaveFolder();
        trail_.take();
        if (mark == folderMark) return visitFolder();
        if (mark == otherMark) return tell(TreeEvent::Kind::other);
        if (const TreeEvent* event = visitFile()) return event;
    }
    return nullptr;
}

void LinuxTreeReader::skip() {
    folder_.mayEnter = false;
    folders_->passOver(folder_);
}

const TreeEvent* LinuxTreeReader::visitFolder() {
    if (!findFolder()) return tell(TreeEvent::Kind::noStatus, ESTALE);
    if (folder_.kind != TreeEvent::Kind::directory) return tell(folder_.kind, folder_.error);
    isAtFolder_ = true;
    tell(TreeEvent::Kind::directory);
    event_.status = folder_.status;
    return &event_;
}

/// False for a folder that was given up with the rest of the one that it lies in.
bool LinuxTreeReader::findFolder() {
    bool hasCome = std::exchange(isAhead_, false) || folders_->next(folder_);
    // What lies in folders that were passed over may come before.
    while (hasCome && folder_.level > trail_.level()) hasCome = folders_->next(folder_);
    isAhead_ = hasCome && folder_.level < trail_.level();
    return hasCome && !isAhead_;
}

/// Null when the file is gone.
const TreeEvent* LinuxTreeReader::visitFile() {
    const StatusAnswer* known = trail_.answer();
    const StatusAnswer answer = known != nullptr ? *known : askForStatus(trail_.folder(), trail_.name());
    if (answer.error == ENOENT) return nullptr;
    if (answer.error != 0) return tell(TreeEvent::Kind::noStatus, answer.error);
    // A file when it was listed: its place in the order would be wrong.
    if (S_ISDIR(answer.mode)) return tell(TreeEvent::Kind::noStatus, ESTALE);
    if (!S_ISREG(answer.mode)) return tell(TreeEvent::Kind::other);
    tell(TreeEvent::Kind::file);
    event_.status = answer.status;
    event_.status.isDataless = isDataless_(event_);
    return &event_;
}

/// Null when the entries of the folder come next.
const TreeEvent* LinuxTreeReader::enterFolder() {
    if (!folder_.mayEnter) return tell(TreeEvent::Kind::directoryEnd);
    folders_->enter(folder_);
    if (!folder_.listing) return tell(TreeEvent::Kind::unreadableDirectory, folder_.error);
    trail_.enter(folder_);
    return nullptr;
}

const TreeEvent* LinuxTreeReader::leaveFolder() {
    const int error = trail_.leave();
    return tell(error == 0 ? TreeEvent::Kind::directoryEnd : TreeEvent::Kind::unreadableDirectory, error);
}

const TreeEvent* LinuxTreeReader::tell(TreeEvent::Kind kind, int error) {
    event_.kind = kind;
    event_.level = trail_.level();
    event_.path = trail_.path();
    event_.error = error;
    return &event_;
}

}  // namespace brindle
