#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace brindle {

/// One row of the system's mount table.
struct Mount {
    int id = 0;
    int parentID = 0;     // the mount that holds the target
    dev_t device = 0;     // of the file system; a number of no block device where it has none of its own
    std::string target;   // where it is mounted
    std::string root;     // which folder of the file system is mounted there; "/" but for bind mounts
    std::string type;     // "ext4", "fuse.sshfs"
    std::string source;   // "/dev/sda1", "server:/export"; may be empty
    std::string options;  // of the mount and the file system, and what fstab adds for other programs

    bool operator==(const Mount&) const = default;
};

/// What is mounted where. Answers come from the table alone: nothing touches the paths asked about, so that
/// a server that does not answer holds nobody up.
class MountTable {
public:
    explicit MountTable(std::vector<Mount> mounts) : mounts_(std::move(mounts)) {}

    /// The table of this process, now. Throws std::system_error when it cannot be read.
    [[nodiscard]] static MountTable current();

    /// A table in the kernel's form (mountinfo), with the options that the table `fstab` adds for the same
    /// targets; without those when `fstab` cannot be read. Throws std::system_error.
    [[nodiscard]] static MountTable read(const std::string& mountinfo, const std::string& fstab);

    [[nodiscard]] const std::vector<Mount>& mounts() const { return mounts_; }

    /// The mount that a standardised path without symbolic links lies on: the one on top where several share
    /// a target, and none that a later mount further up has covered. Null when the table names none.
    [[nodiscard]] const Mount* holding(std::string_view path) const;

private:
    std::vector<Mount> mounts_;
};

/// Whether the files are on a drive of this computer, or in its memory, rather than on another computer.
[[nodiscard]] bool isLocal(const Mount& mount);

/// Whether what is mounted is the system's own bookkeeping in the form of files, of which none is stored.
[[nodiscard]] bool isPseudo(const Mount& mount);

/// Whether the mount is a drive, or a volume of one, that a person would recognise as such.
[[nodiscard]] bool isDrive(const Mount& mount);

/// Whether the mount is a folder of another computer that a person would recognise as such.
[[nodiscard]] bool isShare(const Mount& mount);

/// Whether the file system shares its space with others, so that its used blocks are not its own.
[[nodiscard]] bool sharesPool(const Mount& mount);

/// The value of an option ("subvolid" of "rw,subvolid=256"); empty when it is absent or has none.
[[nodiscard]] std::string_view optionValue(const Mount& mount, std::string_view name);

/// Whether the option is there, with or without a value.
[[nodiscard]] bool hasOption(const Mount& mount, std::string_view name);

}  // namespace brindle
