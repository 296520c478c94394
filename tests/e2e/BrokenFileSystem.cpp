// A small file system in memory whose disk can be made to fail:
//
//     broken_file_system FAULT_FILE MOUNT_POINT [OPTIONS]
//
// holds /a, /z and /deep with its files 0 to 1499, of 1,000 bytes each. FAULT_FILE names what fails from now
// on with an error of input and output: "open", "list" (in the middle), "status" (of file 750) are faults of
// /deep, and "root" is one of the root's listing. "slow" fails nothing, but takes a millisecond for the
// status of a file; "silent" is a server that never answers again. Any other text, or none, stands for a disk
// that works. OPTIONS are those of the mount: what the file system is known by.

#define FUSE_USE_VERSION 31

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstring>
#include <fstream>
#include <fuse.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int fileCount = 1500;
constexpr off_t fileSize = 1000;
constexpr ino_t rootNumber = 1;
constexpr ino_t deepNumber = 2;
constexpr ino_t firstFileNumber = 10;

std::string faultFile;

bool isBroken(std::string_view part) {
    std::string fault;
    std::ifstream(faultFile) >> fault;
    return fault == part;
}

void stayAwayIfSilent() {
    while (isBroken("silent")) ::pause();
}

std::optional<int> numberOf(std::string_view path) {
    constexpr std::string_view folder = "/deep/";
    int number = -1;
    if (!path.starts_with(folder)) return {};
    const char* end = path.data() + path.size();
    const auto [last, error] = std::from_chars(path.data() + folder.size(), end, number);
    if (error != std::errc() || last != end || number < 0 || number >= fileCount) return {};
    return number;
}

void describe(struct stat& status, ino_t number, bool isFolder) {
    status = {};
    status.st_ino = number;
    status.st_mode = isFolder ? S_IFDIR | 0755 : S_IFREG | 0644;
    status.st_nlink = 1;
    status.st_size = isFolder ? 0 : fileSize;
}

void* start(fuse_conn_info*, fuse_config* config) {
    config->use_ino = 1;
    // Nothing is remembered, so that a fault is seen at once.
    config->entry_timeout = 0;
    config->attr_timeout = 0;
    config->negative_timeout = 0;
    return nullptr;
}

int getStatus(const char* text, struct stat* status, fuse_file_info*) {
    const std::string_view path = text;
    stayAwayIfSilent();
    if (path == "/") {
        describe(*status, rootNumber, true);
    } else if (path == "/deep") {
        describe(*status, deepNumber, true);
    } else if (path == "/a" || path == "/z") {
        describe(*status, path == "/a" ? 3 : 4, false);
    } else if (const auto number = numberOf(path)) {
        if (*number == fileCount / 2 && isBroken("status")) return -EIO;
        if (isBroken("slow")) std::this_thread::sleep_for(std::chrono::microseconds(700));
        describe(*status, firstFileNumber + static_cast<ino_t>(*number), false);
    } else {
        return -ENOENT;
    }
    return 0;
}

int openFolder(const char* path, fuse_file_info*) {
    stayAwayIfSilent();
    return std::string_view(path) == "/deep" && isBroken("open") ? -EIO : 0;
}

int readFolder(const char* path, void* buffer, fuse_fill_dir_t fill, off_t offset, fuse_file_info*,
               fuse_readdir_flags) {
    constexpr fuse_fill_dir_flags plain{};
    stayAwayIfSilent();
    if (std::string_view(path) == "/") {
        if (isBroken("root")) return -EIO;
        for (const char* name : {".", "..", "a", "deep", "z"}) fill(buffer, name, nullptr, 0, plain);
        return 0;
    }
    // Each entry tells where the next one is, so that the listing comes in parts.
    for (off_t next = offset; next < fileCount; ++next) {
        if (next >= fileCount / 2 && isBroken("list")) return next == offset ? -EIO : 0;
        if (fill(buffer, std::to_string(next).c_str(), nullptr, next + 1, plain) != 0) return 0;
    }
    return 0;
}

int describeDisk(const char*, struct statvfs* status) {
    stayAwayIfSilent();
    *status = {.f_bsize = 4096, .f_frsize = 4096, .f_blocks = 1000, .f_bfree = 500, .f_bavail = 500};
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) return 2;
    faultFile = argv[1];
    fuse_operations operations{};
    operations.init = start;
    operations.getattr = getStatus;
    operations.opendir = openFolder;
    operations.readdir = readFolder;
    operations.statfs = describeDisk;
    // In the foreground and one request at a time.
    char foreground[] = "-f";
    char oneThread[] = "-s";
    std::string options = std::string("-oallow_other,") + (argc == 4 ? argv[3] : "fsname=broken");
    char* arguments[] = {argv[0], foreground, oneThread, options.data(), argv[2]};
    return fuse_main(std::size(arguments), arguments, &operations, nullptr);
}
