#include "support/ScarceMemory.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <sqlite3.h>
#include <stdexcept>

namespace {

std::atomic<long> allocationsCounted = 0;
std::atomic<long> failing = 0;
std::atomic<bool> goesOn = false;

bool isDenied() {
    const long number = ++allocationsCounted;
    const long failAt = failing;
    return failAt > 0 && (number == failAt || (goesOn && number > failAt));
}

sqlite3_mem_methods usual;

void* allocateForSQLite(int size) {
    return isDenied() ? nullptr : usual.xMalloc(size);
}
void* reallocateForSQLite(void* memory, int size) {
    return isDenied() ? nullptr : usual.xRealloc(memory, size);
}

void setAllocator(const sqlite3_mem_methods& methods) {
    // What SQLite keeps for temporary files is of the allocator that goes.
    sqlite3_free(sqlite3_temp_directory);
    sqlite3_temp_directory = nullptr;
    if (sqlite3_shutdown() != SQLITE_OK || sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) != SQLITE_OK ||
        sqlite3_initialize() != SQLITE_OK)
        throw std::runtime_error("SQLite takes no other memory");
}

}  // namespace

void* operator new(std::size_t size) {
    void* memory = isDenied() ? nullptr : std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace brindle {

ScarceMemory::ScarceMemory() {
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &usual);
    if (usual.xMalloc == nullptr) {
        sqlite3_initialize();
        sqlite3_shutdown();
        sqlite3_config(SQLITE_CONFIG_GETMALLOC, &usual);
    }
    sqlite3_mem_methods scarce = usual;
    scarce.xMalloc = allocateForSQLite;
    scarce.xRealloc = reallocateForSQLite;
    setAllocator(scarce);
}

ScarceMemory::~ScarceMemory() {
    disarm();
    setAllocator(usual);
}

void ScarceMemory::arm(long failAt, bool onward) {
    failAt_ = failAt;
    failing = 0;
    goesOn = onward;
    allocationsCounted = 0;
    failing = failAt;
}

long ScarceMemory::allocations() const {
    return allocationsCounted;
}

}  // namespace brindle
