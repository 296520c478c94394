// brindle_make_tree DIR FILES: makes a tree in DIR, which must be there and empty. The same number of files
// always gives the same tree: about 12 files a folder, 8 levels, paths of 100 bytes. Files are sparse.

#include "platform/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <random>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

using brindle::FileDescriptor;

constexpr std::array<std::string_view, 16> words{
    "archive", "budget",  "concert", "drawing", "engine",  "forest",  "garden", "holiday",
    "invoice", "journey", "kitchen", "lecture", "morning", "network", "orbit",  "portrait"};
constexpr std::array<std::string_view, 8> extensions{".txt", ".jpg",  ".cpp", ".pdf",
                                                     ".o",   ".json", ".mp3", ""};

constexpr std::uint64_t leastFilesHere = 4;
constexpr std::uint64_t mostFilesHere = 24;
constexpr std::uint64_t leastFolders = 3;
constexpr std::uint64_t mostFolders = 8;
constexpr std::uint64_t mostBytes = 16384;

class TreeGenerator {
public:
    void fill(int folder, std::uint64_t files) {
        const auto here = std::min(files, between(leastFilesHere, mostFilesHere));
        for (std::uint64_t number = 0; number < here; ++number) makeFile(folder, number);

        std::uint64_t left = files - here;
        auto folders = std::min(between(leastFolders, mostFolders), 1 + left / mostFilesHere);
        for (; left > 0; --folders) {
            const auto mean = left / folders;
            const auto share = folders <= 1 ? left : std::min(left, mean / 2 + between(1, mean + 1));
            fill(makeFolder(folder, mostFilesHere + folders).get(), share);
            left -= share;
        }
    }

private:
    std::uint64_t between(std::uint64_t least, std::uint64_t most) {
        return least + random_() % (most - least + 1);
    }

    template <std::size_t n>
    std::string_view oneOf(const std::array<std::string_view, n>& texts) {
        return texts[between(0, n - 1)];
    }

    // The number makes the name unique in its folder.
    std::string name(std::uint64_t number) {
        return std::string(oneOf(words)) + '-' + std::to_string(between(10, 99)) + std::to_string(number);
    }

    void makeFile(int folder, std::uint64_t number) {
        const auto path = name(number) + std::string(oneOf(extensions));
        const FileDescriptor file(
            ::openat(folder, path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
        if (!file || ::ftruncate(file.get(), static_cast<off_t>(between(0, mostBytes))) != 0)
            throw std::system_error(errno, std::generic_category(), path);
    }

    FileDescriptor makeFolder(int parent, std::uint64_t number) {
        const auto path = name(number);
        if (::mkdirat(parent, path.c_str(), 0755) != 0)
            throw std::system_error(errno, std::generic_category(), path);
        FileDescriptor folder(::openat(parent, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!folder) throw std::system_error(errno, std::generic_category(), path);
        return folder;
    }

    std::mt19937_64 random_;
};

}  // namespace

int main(int count, char** arguments) try {
    if (count != 3) {
        std::fputs("usage: brindle_make_tree DIR FILES\n", stderr);
        return 2;
    }
    const FileDescriptor root(::open(arguments[1], O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!root) throw std::system_error(errno, std::generic_category(), arguments[1]);
    TreeGenerator().fill(root.get(), std::stoull(arguments[2]));
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "brindle_make_tree: %s\n", error.what());
    return 3;
}
