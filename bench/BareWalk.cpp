// brindle_bare_walk TREE [THREADS]: the system calls that no walk can do without, and nothing else: every
// folder is opened, listed to its end and closed, every file in it is asked for its status, in the order of
// the listing. What is left of the time of a real walk is its own. Prints the number of files.

#include "platform/FileDescriptor.h"

#include <array>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <exception>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <vector>

namespace {

using brindle::FileDescriptor;

struct Folder {
    std::shared_ptr<FileDescriptor> parent;
    std::string name;
};

/// The folders that were found and not yet read; several threads take the newest first.
class Folders {
public:
    void add(Folder folder) {
        const std::scoped_lock guard(lock_);
        found_.push_back(std::move(folder));
        changed_.notify_one();
    }

    /// Nothing once every folder was read.
    bool take(Folder& folder, bool hasReadOne) {
        std::unique_lock guard(lock_);
        if (hasReadOne) --reading_;
        if (reading_ == 0) changed_.notify_all();
        changed_.wait(guard, [this] { return !found_.empty() || reading_ == 0; });
        if (found_.empty()) return false;
        folder = std::move(found_.back());
        found_.pop_back();
        ++reading_;
        return true;
    }

private:
    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<Folder> found_;
    int reading_ = 0;
};

/// Gives the number of files in the folder.
std::int64_t read(const Folder& folder, Folders& found) {
    const int above = folder.parent ? folder.parent->get() : AT_FDCWD;
    const auto opened = std::make_shared<FileDescriptor>(
        ::openat(above, folder.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!*opened) throw std::system_error(errno, std::generic_category(), folder.name);
    std::int64_t files = 0;
    alignas(dirent64) std::array<char, 32768> listing;
    for (;;) {
        const ssize_t size = ::getdents64(opened->get(), listing.data(), listing.size());
        if (size < 0) throw std::system_error(errno, std::generic_category(), folder.name);
        if (size == 0) return files;
        for (const char* next = listing.data(); next < listing.data() + size;) {
            const void* record = next;
            const auto* entry = static_cast<const dirent64*>(record);
            next += entry->d_reclen;
            const std::string_view name = entry->d_name;
            struct statx status {};
            if (entry->d_type == DT_DIR) {
                if (name != "." && name != "..") found.add({opened, std::string(name)});
            } else if (::statx(opened->get(), entry->d_name, AT_SYMLINK_NOFOLLOW | AT_STATX_DONT_SYNC,
                               STATX_BASIC_STATS | STATX_BTIME, &status) == 0) {
                files += S_ISREG(status.stx_mode);
            }
        }
    }
}

}  // namespace

int main(int count, char** arguments) try {
    if (count < 2 || count > 3) {
        std::fputs("usage: brindle_bare_walk TREE [THREADS]\n", stderr);
        return 2;
    }
    Folders folders;
    folders.add({nullptr, arguments[1]});
    std::vector<std::int64_t> files(count > 2 ? std::stoul(arguments[2]) : 1);
    std::vector<std::thread> threads;
    for (std::int64_t& sum : files)
        threads.emplace_back([&folders, &sum] {
            Folder folder;
            for (bool hasReadOne = false; folders.take(folder, hasReadOne); hasReadOne = true)
                sum += read(folder, folders);
        });
    for (std::thread& thread : threads) thread.join();
    std::int64_t all = 0;
    for (const std::int64_t sum : files) all += sum;
    std::printf("%lld\n", static_cast<long long>(all));
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "brindle_bare_walk: %s\n", error.what());
    return 3;
}
