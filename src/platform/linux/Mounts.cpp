#include "platform/Mounts.h"

#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <libmount/libmount.h>
#include <memory>
#include <system_error>

namespace brindle {
namespace {

using Table = std::unique_ptr<libmnt_table, decltype(&mnt_unref_table)>;
using Cursor = std::unique_ptr<libmnt_iter, decltype(&mnt_free_iter)>;

std::string text(const char* value) {
    return value != nullptr ? value : "";
}

/// Calls `handle` for each row of the file, in its order. Returns 0, or the error.
template <class Handle>
int readTable(const std::string& file, Handle&& handle) {
    const Table table(mnt_new_table(), &mnt_unref_table);
    const Cursor cursor(mnt_new_iter(MNT_ITER_FORWARD), &mnt_free_iter);
    if (!table || !cursor) return ENOMEM;
    if (const int result = mnt_table_parse_file(table.get(), file.c_str()); result != 0)
        return result < 0 ? -result : EINVAL;
    libmnt_fs* row = nullptr;
    while (mnt_table_next_fs(table.get(), cursor.get(), &row) == 0) handle(row);
    return 0;
}

/// The options that the kernel does not know and that therefore stand only in fstab.
std::string optionsForOtherPrograms(const std::string& options) {
    std::string kept;
    for (std::size_t start = 0; start < options.size();) {
        const auto end = std::min(options.find(',', start), options.size());
        if (options.compare(start, 2, "x-") == 0) kept += "," + options.substr(start, end - start);
        start = end + 1;
    }
    return kept;
}

}  // namespace

MountTable MountTable::current() {
    return read("/proc/self/mountinfo", "/etc/fstab");
}

MountTable MountTable::read(const std::string& mountinfo, const std::string& fstab) {
    std::vector<Mount> mounts;
    const int error = readTable(mountinfo, [&](libmnt_fs* row) {
        mounts.push_back({.id = mnt_fs_get_id(row),
                          .parentID = mnt_fs_get_parent_id(row),
                          .device = mnt_fs_get_devno(row),
                          .target = text(mnt_fs_get_target(row)),
                          .root = text(mnt_fs_get_root(row)),
                          .type = text(mnt_fs_get_fstype(row)),
                          .source = text(mnt_fs_get_source(row)),
                          .options = text(mnt_fs_get_options(row))});
    });
    if (error != 0) throw std::system_error(error, std::generic_category(), mountinfo);

    readTable(fstab, [&](libmnt_fs* row) {
        for (auto& mount : mounts)
            if (mount.target == text(mnt_fs_get_target(row)))
                mount.options += optionsForOtherPrograms(text(mnt_fs_get_options(row)));
    });
    return MountTable(std::move(mounts));
}

const Mount* MountTable::holding(std::string_view path) const {
    const auto isOutermost = [&](const Mount& mount) {
        return mount.target == "/" &&
               (mount.parentID == mount.id ||
                std::ranges::find(mounts_, mount.parentID, &Mount::id) == mounts_.end());
    };
    // Follows the path as the system would, from mount to mount: of the mounts on the one reached, the first
    // that the path comes to is the one nearest its top.
    const Mount* reached = nullptr;
    for (;;) {
        const Mount* next = nullptr;
        for (const auto& mount : mounts_) {
            const bool isNext = reached == nullptr ? isOutermost(mount)
                                                   : mount.parentID == reached->id && mount.id != reached->id;
            if (!isNext || !isAtOrBelow(path, mount.target)) continue;
            if (next == nullptr || mount.target.size() < next->target.size()) next = &mount;
        }
        if (next == nullptr) return reached;
        reached = next;
    }
}

}  // namespace brindle
