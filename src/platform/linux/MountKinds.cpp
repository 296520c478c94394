#include "platform/Mounts.h"

#include <algorithm>
#include <array>

namespace brindle {
namespace {

using namespace std::string_view_literals;

constexpr std::array networkTypes{"9p"sv,    "acfs"sv,   "afs"sv,       "beegfs"sv,   "ceph"sv,   "cifs"sv,
                                  "coda"sv,  "davfs"sv,  "glusterfs"sv, "gpfs"sv,     "lustre"sv, "ncp"sv,
                                  "ncpfs"sv, "nfs"sv,    "nfs4"sv,      "orangefs"sv, "pvfs2"sv,  "smb3"sv,
                                  "smbfs"sv, "vboxsf"sv, "vmhgfs"sv};

// The second half of "fuse.NAME".
constexpr std::array networkSubtypes{"afpfs"sv,        "afp"sv,
                                     "blobfuse"sv,     "blobfuse2"sv,
                                     "ceph"sv,         "ceph-fuse"sv,
                                     "cifs"sv,         "curlftpfs"sv,
                                     "cvmfs2"sv,       "davfs"sv,
                                     "davfs2"sv,       "gcsfuse"sv,
                                     "glusterfs"sv,    "google-drive-ocamlfuse"sv,
                                     "goofys"sv,       "gvfs-fuse-daemon"sv,
                                     "gvfsd-fuse"sv,   "httpdirfs"sv,
                                     "httpfs"sv,       "ifuse"sv,
                                     "ipfs"sv,         "juicefs"sv,
                                     "kio-fuse"sv,     "mfs"sv,
                                     "mount-s3"sv,     "moosefs"sv,
                                     "nfs"sv,          "onedriver"sv,
                                     "rclone"sv,       "s3fs"sv,
                                     "s3ql"sv,         "seaweedfs"sv,
                                     "simple-mtpfs"sv, "jmtpfs"sv,
                                     "smbnetfs"sv,     "sshfs"sv,
                                     "vmhgfs-fuse"sv,  "weed"sv,
                                     "wdfs"sv};

// Joined views of local folders, whose sources may read like those of a server ("disk1:disk2").
constexpr std::array joiningSubtypes{"mergerfs"sv, "mhddfs"sv, "unionfs"sv};

constexpr std::array pseudoTypes{
    "autofs"sv,   "bdev"sv,      "binder"sv,     "binfmt_misc"sv, "bpf"sv,         "cgroup"sv,
    "cgroup2"sv,  "configfs"sv,  "cpuset"sv,     "debugfs"sv,     "devfs"sv,       "devpts"sv,
    "devtmpfs"sv, "dlmfs"sv,     "efivarfs"sv,   "fuse.lxcfs"sv,  "fuse.portal"sv, "fuse.vmware-vmblock"sv,
    "fusectl"sv,  "hugetlbfs"sv, "mqueue"sv,     "nfsd"sv,        "nsfs"sv,        "proc"sv,
    "pstore"sv,   "resctrl"sv,   "rpc_pipefs"sv, "securityfs"sv,  "selinuxfs"sv,   "smackfs"sv,
    "sysfs"sv,    "tracefs"sv};

// In memory, views of other file systems, and images of installed programs.
constexpr std::array driveless{"cramfs"sv,  "erofs"sv, "fuse.snapfuse"sv, "fuse.squashfuse"sv,
                               "overlay"sv, "ramfs"sv, "squashfs"sv,      "tmpfs"sv};

// Folders in which a desktop gathers what it shows of other computers.
constexpr std::array shelves{"fuse.gvfs-fuse-daemon"sv, "fuse.gvfsd-fuse"sv, "fuse.kio-fuse"sv};

bool isOneOf(std::string_view text, const auto& list) {
    return std::ranges::find(list, text) != list.end();
}

/// Whether the source of a mount names another computer: "host:path", "//host/share" or a URL.
bool namesServer(std::string_view source) {
    if (source.starts_with("//") || source.find("://") != source.npos) return true;
    const auto colon = source.find(':');
    return colon != source.npos && colon > 0 && source.substr(0, colon).find('/') == source.npos;
}

/// The folder of the file system that is mounted when nothing is bound.
std::string_view wholeRoot(const Mount& mount) {
    const auto subvolume = mount.type == "btrfs" ? optionValue(mount, "subvol") : "";
    return subvolume.empty() ? "/" : subvolume;
}

template <class Use>
void forEachOption(std::string_view options, Use&& use) {
    while (!options.empty()) {
        const auto option = options.substr(0, options.find(','));
        options.remove_prefix(std::min(option.size() + 1, options.size()));
        const auto name = option.substr(0, option.find('='));
        use(name, option.substr(std::min(name.size() + 1, option.size())));
    }
}

}  // namespace

bool isLocal(const Mount& mount) {
    if (isOneOf(mount.type, networkTypes)) return false;
    if (mount.type != "fuse" && !mount.type.starts_with("fuse.")) return true;

    // Old helpers give their name in the source: "sshfs#ann@server:".
    const std::string_view source = mount.source;
    const auto hash = source.find('#');
    const std::string_view subtype = mount.type != "fuse"  ? std::string_view(mount.type).substr(5)
                                     : hash != source.npos ? source.substr(0, hash)
                                                           : "";
    if (isOneOf(subtype, networkSubtypes)) return false;
    return isOneOf(subtype, joiningSubtypes) || !namesServer(source);
}

bool isPseudo(const Mount& mount) {
    return isOneOf(mount.type, pseudoTypes);
}

bool isDrive(const Mount& mount) {
    if (!isLocal(mount) || isPseudo(mount) || isOneOf(mount.type, driveless)) return false;
    if (mount.target == "/boot/efi" || mount.target == "/efi" || hasOption(mount, "x-gvfs-hide"))
        return false;
    // Some systems start from a folder of the drive; for them that is the drive.
    return mount.root == wholeRoot(mount) || mount.target == "/";
}

bool isShare(const Mount& mount) {
    return !isLocal(mount) && !isPseudo(mount) && !isOneOf(mount.type, shelves) &&
           !hasOption(mount, "x-gvfs-hide");
}

bool sharesPool(const Mount& mount) {
    return mount.type == "btrfs";
}

std::string_view optionValue(const Mount& mount, std::string_view name) {
    std::string_view found;
    forEachOption(mount.options, [&](std::string_view option, std::string_view value) {
        if (option == name) found = value;
    });
    return found;
}

bool hasOption(const Mount& mount, std::string_view name) {
    bool isThere = false;
    forEachOption(mount.options,
                  [&](std::string_view option, std::string_view) { isThere |= option == name; });
    return isThere;
}

}  // namespace brindle
