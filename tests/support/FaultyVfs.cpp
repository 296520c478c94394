#include "support/FaultyVfs.h"

#include <csignal>
#include <mutex>
#include <sqlite3.h>
#include <stdexcept>

namespace brindle {
namespace {

std::mutex lock;
DiskFault fault;
int callsCounted = 0;
bool faultCame = false;

/// SQLITE_OK, or the code with which the call that is about to be made must fail.
int verdict() {
    const std::scoped_lock guard(lock);
    ++callsCounted;
    const bool isDue = callsCounted == fault.failAt;
    const bool goesOn = fault.effect == DiskFault::Effect::failOnward && callsCounted > fault.failAt;
    if (fault.failAt == 0 || !(isDue || goesOn)) return SQLITE_OK;
    if (fault.effect == DiskFault::Effect::kill) raise(SIGKILL);
    faultCame = true;
    return fault.code;
}

sqlite3_vfs* disk = nullptr;

/// What SQLite holds of a file: this, followed by the real one.
struct File {
    sqlite3_file base;
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

template <class... Parameters, class... Arguments>
int passUnlessFaulty(int (*sqlite3_io_methods::*method)(sqlite3_file*, Parameters...), sqlite3_file* file,
                     Arguments... arguments) {
    if (const int code = verdict(); code != SQLITE_OK) return code;
    return pass(method, file, arguments...);
}

using Methods = sqlite3_io_methods;

const sqlite3_io_methods methods = {
    .iVersion = 2,
    .xClose = [](sqlite3_file* file) { return pass(&Methods::xClose, file); },
    .xRead = [](sqlite3_file* file, void* to, int size,
                sqlite3_int64 offset) { return pass(&Methods::xRead, file, to, size, offset); },
    .xWrite =
        [](sqlite3_file* file, const void* from, int size, sqlite3_int64 offset) {
            return passUnlessFaulty(&Methods::xWrite, file, from, size, offset);
        },
    .xTruncate = [](sqlite3_file* file,
                    sqlite3_int64 size) { return passUnlessFaulty(&Methods::xTruncate, file, size); },
    .xSync = [](sqlite3_file* file, int flags) { return passUnlessFaulty(&Methods::xSync, file, flags); },
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
    if (const int code = verdict(); code != SQLITE_OK) return code;
    const int code = disk->xOpen(disk, name, realFile(file), flags, outFlags);
    // A file that failed to open may still have to be closed.
    if (realFile(file)->pMethods != nullptr) file->pMethods = &methods;
    return code;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    if (const int code = verdict(); code != SQLITE_OK) return code;
    return disk->xDelete(disk, name, syncFolder);
}

sqlite3_vfs faulty;

}  // namespace

FaultyVfs::FaultyVfs() {
    disk = sqlite3_vfs_find(nullptr);
    faulty = *disk;
    faulty.zName = "faulty";
    faulty.pNext = nullptr;
    faulty.szOsFile = static_cast<int>(sizeof(File)) + disk->szOsFile;
    faulty.xOpen = openFile;
    faulty.xDelete = deleteFile;
    if (sqlite3_vfs_register(&faulty, 1) != SQLITE_OK)
        throw std::runtime_error("the faulty disk can't be registered");
    disarm();
}

FaultyVfs::~FaultyVfs() {
    disarm();
    sqlite3_vfs_unregister(&faulty);
    sqlite3_vfs_register(disk, 1);
}

void FaultyVfs::arm(const DiskFault& next) {
    const std::scoped_lock guard(lock);
    fault = next;
    callsCounted = 0;
    faultCame = false;
}

int FaultyVfs::calls() const {
    const std::scoped_lock guard(lock);
    return callsCounted;
}

bool FaultyVfs::hasFailed() const {
    const std::scoped_lock guard(lock);
    return faultCame;
}

}  // namespace brindle
