#include "support/RandomTree.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

// Names that sort around the separator, look like something else, or are no text at all.
constexpr std::string_view trickyNames[] = {
    "a",         "a-b",       "a.txt",        "a0",      "a b",    "a\n",        "A",
    "\xc3\xa1",  "a\xcc\x81", "\xff\xfe",     "-",       "--json", "...",        ".a",
    " ",         "a ",        "%s{}",         "\x1b[2J", "\"a\"",  "'",          "\\",
    "|",         "\x01",      "\xe2\x80\xae", "0",       "*",      "$HOME",      "\xed\xa0\x80",
    "a\xf0\x9f", "\r",        "\t",           "?",       ".Trash", "lost+found", "\xc0\xaf",
};

constexpr std::size_t longestName = 255;
constexpr std::size_t longestFolder = 1000;  // of those that get new entries
constexpr std::size_t longestPath = 3500;

bool isThere(const fs::path& path) {
    return fs::symlink_status(path).type() != fs::file_type::not_found;
}

bool isBelow(const fs::path& path, const fs::path& folder) {
    return path.native().starts_with(folder.native() + "/");
}

}  // namespace

RandomTree::RandomTree(Path root, std::uint64_t seed) : root_(std::move(root)), random_(seed) {
    fs::create_directories(root_);
}

void RandomTree::change(int times) {
    static constexpr void (RandomTree::*changes[])() = {
        &RandomTree::addFile,         &RandomTree::addFile,     &RandomTree::addFile,
        &RandomTree::addFolder,       &RandomTree::addFolder,   &RandomTree::addChain,
        &RandomTree::addSpecialFile,  &RandomTree::addHardLink, &RandomTree::addHardLink,
        &RandomTree::addSymbolicLink, &RandomTree::resize,      &RandomTree::resize,
        &RandomTree::resize,          &RandomTree::remove,      &RandomTree::rename,
        &RandomTree::rename,          &RandomTree::changeMode,  &RandomTree::exchangeFileAndFolder,
    };
    for (; times > 0; --times) {
        entries_ = list();
        (this->*changes[below(std::size(changes))])();
    }
}

void RandomTree::addFile() {
    writeFile(freePath());
}

void RandomTree::addFolder() {
    fs::create_directory(freePath());
}

/// Folders in folders, with a file beside each: deeper than the folders that a walk keeps open.
void RandomTree::addChain() {
    Path folder = freePath();
    for (auto depth = below(30); depth > 0; --depth) {
        fs::create_directory(folder);
        writeFile(folder / "a");
        folder /= "a-";
    }
}

void RandomTree::addSpecialFile() {
    const mode_t type = below(2) == 0 ? S_IFIFO : S_IFSOCK;
    if (::mknod(freePath().c_str(), type | 0600U, 0) != 0)
        throw std::system_error(errno, std::generic_category());
}

void RandomTree::addHardLink() {
    if (!entries_.files.empty()) fs::create_hard_link(oneOf(entries_.files), freePath());
}

void RandomTree::addSymbolicLink() {
    const Path target = below(4) == 0 ? Path("nowhere") : oneOf(entries_.folders);
    fs::create_symlink(target, freePath());
}

void RandomTree::resize() {
    if (!entries_.files.empty()) fs::resize_file(oneOf(entries_.files), size());
}

void RandomTree::remove() {
    if (!entries_.all.empty()) fs::remove_all(oneOf(entries_.all));
}

void RandomTree::rename() {
    if (entries_.all.empty()) return;
    const Path from = oneOf(entries_.all);
    const Path to = freePath();
    std::size_t below = 0;
    for (const Path& path : entries_.all)
        if (isBelow(path, from)) below = std::max(below, path.native().size() - from.native().size());
    if (!isBelow(to, from) && to.native().size() + below <= longestPath) fs::rename(from, to);
}

void RandomTree::exchangeFileAndFolder() {
    if (entries_.all.empty()) return;
    const Path path = oneOf(entries_.all);
    const bool wasFolder = fs::symlink_status(path).type() == fs::file_type::directory;
    fs::remove_all(path);
    if (wasFolder) return writeFile(path);
    fs::create_directory(path);
    writeFile(freePathIn(path));
}

void RandomTree::changeMode() {
    if (entries_.all.empty()) return;
    const Path path = oneOf(entries_.all);
    if (fs::symlink_status(path).type() == fs::file_type::symlink) return;
    fs::permissions(path, below(2) == 0 ? fs::perms(0700) : fs::perms(01755));
}

RandomTree::Entries RandomTree::list() const {
    Entries entries;
    for (const auto& entry : fs::recursive_directory_iterator(root_)) {
        entries.all.push_back(entry.path());
        if (entry.is_symlink()) continue;
        if (entry.is_directory()) entries.folders.push_back(entry.path());
        if (entry.is_regular_file()) entries.files.push_back(entry.path());
    }
    // The order of a listing is the file system's own.
    for (auto* paths : {&entries.folders, &entries.files, &entries.all}) std::ranges::sort(*paths);
    entries.folders.insert(entries.folders.begin(), root_);
    return entries;
}

std::uint64_t RandomTree::below(std::uint64_t end) {
    return random_() % end;
}

std::string RandomTree::name() {
    if (below(3) != 0) return std::string(trickyNames[below(std::size(trickyNames))]);
    std::string bytes(below(20) == 0 ? longestName : 1 + below(12), '\0');
    for (char& byte : bytes) {
        do byte = static_cast<char>(1 + below(255));
        while (byte == '/');
    }
    return bytes == "." || bytes == ".." ? name() : bytes;
}

RandomTree::Path RandomTree::freePath() {
    return freePathIn(oneOf(entries_.folders));
}

RandomTree::Path RandomTree::freePathIn(Path folder) {
    if (folder.native().size() > longestFolder) folder = root_;
    Path path;
    do path = folder / name();
    while (isThere(path));
    return path;
}

/// Often none, mostly small, and now and then far more than the disk holds: such a file has holes.
std::uintmax_t RandomTree::size() {
    switch (below(6)) {
        case 0:
            return 0;
        case 1:
            return below(std::uint64_t{1} << 42);
        default:
            return below(std::uint64_t{1} << 14);
    }
}

void RandomTree::writeFile(const Path& path) {
    std::ofstream(path).close();
    fs::resize_file(path, size());
}

}  // namespace brindle
