#include "support/WatchedDisk.h"

#include <sqlite3.h>
#include <stdexcept>
#include <utility>

namespace brindle {
namespace {

WatchedDisk::Watch watcher;
sqlite3_vfs* disk = nullptr;
sqlite3_vfs watched;

/// What SQLite holds of a file: this, followed by the real one.
struct File {
    sqlite3_file base;
    const char* path;  // SQLite keeps it until the file is closed
};

sqlite3_file* realFile(sqlite3_file* file) {
    return reinterpret_cast<sqlite3_file*>(reinterpret_cast<char*>(file) + sizeof(File));
}

template <class... Parameters, class... Arguments>
int pass(int (*sqlite3_io_methods::*method)(sqlite3_file*, Parameters...), sqlite3_file* file,
         Arguments... arguments) {
    sqlite3_file* real = realFile(file);
    return (real->pMethods->*method)(real, arguments...);
}

int ask(sqlite3_file* file, DiskCall call) {
    call.path = reinterpret_cast<File*>(file)->path;
    return watcher(call);
}

using Methods = sqlite3_io_methods;
using Kind = DiskCall::Kind;

const sqlite3_io_methods methods = {
    .iVersion = 2,
    .xClose = [](sqlite3_file* file) { return pass(&Methods::xClose, file); },
    .xRead = [](sqlite3_file* file, void* to, int size,
                sqlite3_int64 offset) { return pass(&Methods::xRead, file, to, size, offset); },
    .xWrite =
        [](sqlite3_file* file, const void* from, int size, sqlite3_int64 offset) {
            const std::span bytes(static_cast<const char*>(from), static_cast<std::size_t>(size));
            const int code = ask(file, {.kind = Kind::write, .path = {}, .offset = offset, .bytes = bytes});
            return code != SQLITE_OK ? code : pass(&Methods::xWrite, file, from, size, offset);
        },
    .xTruncate =
        [](sqlite3_file* file, sqlite3_int64 size) {
            const int code = ask(file, {.kind = Kind::truncate, .path = {}, .offset = size, .bytes = {}});
            return code != SQLITE_OK ? code : pass(&Methods::xTruncate, file, size);
        },
    .xSync =
        [](sqlite3_file* file, int flags) {
            const int code = ask(file, {.kind = Kind::sync, .path = {}, .bytes = {}});
            return code != SQLITE_OK ? code : pass(&Methods::xSync, file, flags);
        },
    .xFileSize = [](sqlite3_file* file,
                    sqlite3_int64* size) { return pass(&Methods::xFileSize, file, size); },
    .xLock = [](sqlite3_file* file, int level) { return pass(&Methods::xLock, file, level); },
    .xUnlock = [](sqlite3_file* file, int level) { return pass(&Methods::xUnlock, file, level); },
    .xCheckReservedLock = [](sqlite3_file* file,
                             int* result) { return pass(&Methods::xCheckReservedLock, file, result); },
    .xFileControl = [](sqlite3_file* file, int operation,
                       void* argument) { return pass(&Methods::xFileControl, file, operation, argument); },
    .xSectorSize = [](sqlite3_file* file) { return pass(&Methods::xSectorSize, file); },
    .xDeviceCharacteristics = [](sqlite3_file* file) { return pass(&Methods::xDeviceCharacteristics, file); },
    .xShmMap =
        [](sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
            return pass(&Methods::xShmMap, file, region, size, extend, memory);
        },
    .xShmLock = [](sqlite3_file* file, int offset, int count,
                   int flags) { return pass(&Methods::xShmLock, file, offset, count, flags); },
    .xShmBarrier =
        [](sqlite3_file* file) {
            sqlite3_file* real = realFile(file);
            real->pMethods->xShmBarrier(real);
        },
    .xShmUnmap = [](sqlite3_file* file, int remove) { return pass(&Methods::xShmUnmap, file, remove); },
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    file->pMethods = nullptr;
    const bool isKept = name != nullptr && (flags & SQLITE_OPEN_DELETEONCLOSE) == 0;
    const char* path = isKept ? name : "";
    if (const int code = watcher({.kind = Kind::open, .path = path, .bytes = {}}); code != SQLITE_OK)
        return code;
    const int code = disk->xOpen(disk, name, realFile(file), flags, outFlags);
    // A file that failed to open may still have to be closed.
    if (realFile(file)->pMethods != nullptr) file->pMethods = &methods;
    reinterpret_cast<File*>(file)->path = path;
    return code;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    if (const int code = watcher({.kind = Kind::remove, .path = name, .bytes = {}}); code != SQLITE_OK)
        return code;
    return disk->xDelete(disk, name, syncFolder);
}

}  // namespace

WatchedDisk::WatchedDisk(Watch watch) {
    watcher = std::move(watch);
    disk = sqlite3_vfs_find(nullptr);
    watched = *disk;
    watched.zName = "watched";
    watched.pNext = nullptr;
    watched.szOsFile = static_cast<int>(sizeof(File)) + disk->szOsFile;
    watched.xOpen = openFile;
    watched.xDelete = deleteFile;
    if (sqlite3_vfs_register(&watched, 1) != SQLITE_OK)
        throw std::runtime_error("the watched disk can't be registered");
}

WatchedDisk::~WatchedDisk() {
    watcher = [](const DiskCall&) { return SQLITE_OK; };  // connections may outlive it
    sqlite3_vfs_unregister(&watched);
    sqlite3_vfs_register(disk, 1);
}

}  // namespace brindle
