#include "platform/linux/TreeReader.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using Kind = TreeEvent::Kind;
using Trace = std::vector<std::string>;
using testing::ElementsAre;

void writeFile(const fs::path& path, std::size_t bytes = 0) {
    std::ofstream(path) << std::string(bytes, 'x');
}

/// One event as a short text: "D a", "F a/b 3" with the size, "U a 13" with the error, "E a".
std::string textOf(const TreeEvent& event) {
    constexpr std::string_view marks = "DEFUNO";
    auto text = fmt::format("{} {}", marks[static_cast<std::size_t>(event.kind)], event.path);
    if (event.kind == Kind::file) text += fmt::format(" {}", event.status.size);
    if (event.error != 0) text += fmt::format(" {}", event.error);
    return text;
}

/// Reads to the end. `after` sees each event before the next one is pulled.
Trace trace(
    TreeReader& reader, const std::function<void(const std::string&)>& after = [](const auto&) {}) {
    Trace texts;
    while (const TreeEvent* event = reader.next()) {
        texts.push_back(textOf(*event));
        after(texts.back());
    }
    return texts;
}

Trace trace(const fs::path& root) {
    return trace(*makeTreeSource()->open(root));
}

class TreeReaderTest : public testing::Test {
protected:
    TreeReaderTest() { fs::permissions(root, fs::perms(0755)); }

    const TempFolder temporary;
    const fs::path root = temporary.path();
};

// The reader and find(1) must tell the same of every file, and the reader in the order of the whole paths.
Trace toldByFind(const fs::path& root) {
    const auto command = "find '" + root.native() + "' -type f -printf '%P %s %b %n %i\\0'";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get())) output += static_cast<char>(c);
    Trace files;
    for (std::size_t begin = 0; begin < output.size();) {
        const auto end = output.find('\0', begin);
        files.push_back(output.substr(begin, end - begin));
        begin = end + 1;
    }
    return files;
}

Trace toldByReader(const fs::path& root) {
    Trace files;
    const auto reader = makeTreeSource()->open(root);
    while (const TreeEvent* event = reader->next()) {
        const auto& status = event->status;
        if (event->kind == Kind::file)
            files.push_back(fmt::format("{} {} {} {} {}", event->path, status.size,
                                        status.allocatedBytes / 512, status.links, status.inode));
    }
    return files;
}

void fillAtRandom(const fs::path& folder, std::mt19937& random, int depth) {
    constexpr std::string_view bytes = "\x01\x20!-.0aAz\x7f\x80\xff";
    static const Trace tricky{"a", "a-b", "a.txt", "a0", "a ", "a\x01", "a\xff", "ab"};
    for (auto count = random() % 9; count > 0; --count) {
        std::string name;
        if (random() % 2 == 0) name = tricky[random() % tricky.size()];
        while (name.empty() || (random() % 3 == 0 && name.size() < 4)) name += bytes[random() % bytes.size()];
        const auto path = folder / name;
        if (name == "." || name == ".." || fs::exists(path)) continue;
        if (depth > 0 && random() % 2 == 0) {
            fs::create_directory(path);
            fillAtRandom(path, random, depth - 1);
        } else {
            writeFile(path, random() % 9000);
        }
    }
}

TEST_F(TreeReaderTest, TellsOfRandomTreesWhatFindTellsInTheOrderOfWholePaths) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        const auto tree = root / std::to_string(seed);
        fs::create_directory(tree);
        std::mt19937 random(seed);
        fillAtRandom(tree, random, 4);
        auto told = toldByFind(tree);
        const auto pathOf = [](const std::string& line) {
            std::size_t end = line.size();
            for (int figures = 0; figures < 4; ++figures) end = line.rfind(' ', end - 1);
            return line.substr(0, end);
        };
        std::sort(told.begin(), told.end(),
                  [&](const auto& a, const auto& b) { return pathOf(a) < pathOf(b); });
        EXPECT_EQ(toldByReader(tree), told) << "seed " << seed;
    }
}

TEST_F(TreeReaderTest, TellsEachKindOfEntryAndOpensFoldersOnly) {
    fs::create_directories(root / "folder/empty");
    writeFile(root / "file", 3);
    fs::create_hard_link(root / "file", root / "folder/second name");
    fs::create_symlink("file", root / "link to file");
    fs::create_symlink("folder", root / "link to folder");
    fs::create_symlink("loop", root / "loop");
    ASSERT_EQ(mkfifo((root / "pipe").c_str(), 0644), 0);  // opening it would wait for a writer
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    std::strncpy(address.sun_path, (root / "socket").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(listener);
    fs::create_directory_symlink(root, root / "folder/up");

    const Trace expected{"D ",
                         "F file 3",
                         "D folder",
                         "D folder/empty",
                         "E folder/empty",
                         "F folder/second name 3",
                         "O folder/up",
                         "E folder",
                         "O link to file",
                         "O link to folder",
                         "O loop",
                         "O pipe",
                         "O socket",
                         "E "};
    EXPECT_EQ(trace(root), expected);
    fs::create_directory_symlink(root, root / "folder/empty/root");
    EXPECT_EQ(trace(root / "folder/empty/root").size(), expected.size() + 1) << "a link as the root";
}

TEST_F(TreeReaderTest, ARootThatCannotBeReadIsTold) {
    writeFile(root / "file");
    EXPECT_THAT(trace(root / "absent"), ElementsAre("N  2"));
    EXPECT_THAT(trace(root / "file"), ElementsAre("N  20"));
    const auto trees = makeTreeSource();
    EXPECT_THROW(static_cast<void>(trees->identify(root / "absent")), std::system_error);
    EXPECT_THROW(static_cast<void>(trees->identify(root / "file")), std::system_error);
    EXPECT_THROW(trees->list(root / "file"), std::system_error);
    EXPECT_NO_THROW(trees->list(root));
}

TEST_F(TreeReaderTest, PathsBelowTheTopOfTheFileSystemBeginWithoutSlash) {
    const auto reader = makeTreeSource()->open("/");
    while (const TreeEvent* event = reader->next()) {
        if (event->level == 1 && event->kind == Kind::directory) reader->skip();
        EXPECT_EQ(event->path.find('/'), std::string_view::npos) << event->path;
    }
}

TEST_F(TreeReaderTest, SkippedAndDatalessFoldersEndAtOnce) {
    for (const auto* folder : {"a", "b", "c"}) {
        fs::create_directory(root / folder);
        writeFile(root / folder / "file");
    }
    const auto reader = makeTreeSource([](const TreeEvent& event) { return event.path != "c"; })->open(root);
    EXPECT_THAT(trace(*reader),
                ElementsAre("D ", "D a", "E a", "D b", "E b", "D c", "F c/file 0", "E c", "E "));

    const auto skipping = makeTreeSource()->open(root);
    const auto skipA = [&](const std::string& event) {
        if (event == "D a") skipping->skip();
    };
    EXPECT_THAT(trace(*skipping, skipA), ElementsAre("D ", "D a", "E a", "D b", "F b/file 0", "E b", "D c",
                                                     "F c/file 0", "E c", "E "));
}

TEST_F(TreeReaderTest, FoldersWithoutPermissionAreToldWithTheRefusal) {
    for (const auto* folder : {"closed", "listable", "open", "searchable"}) {
        fs::create_directory(root / folder);
        writeFile(root / folder / "file");
    }
    fs::permissions(root / "closed", fs::perms(0));
    fs::permissions(root / "listable", fs::perms(0744));
    fs::permissions(root / "searchable", fs::perms(0711));
    const Trace expected{
        "D ",     "D closed",      "U closed 13", "D listable",   "N listable/file 13", "E listable",
        "D open", "F open/file 0", "E open",      "D searchable", "U searchable 13",    "E "};
    EXPECT_TRUE(holdsUnprivileged([&] { return trace(root) == expected; }));
}

TEST_F(TreeReaderTest, LeavesTheAccessTimesOfFoldersAlone) {
    const timespec then[] = {{.tv_sec = 1'000'000'000, .tv_nsec = 0},
                             {.tv_sec = 1'100'000'000, .tv_nsec = 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, root.c_str(), then, 0), 0);
    trace(root);
    struct stat status {};
    ASSERT_EQ(stat(root.c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, then[0].tv_sec);
}

TEST_F(TreeReaderTest, ReadsDeeperThanPathsAndDescriptorsReach) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto memory = TestMount::memory(root);  // taken away at once, where deleting needs descriptors
    constexpr int depth = 4000;
    constexpr const char* name = "abcd";
    constexpr rlim_t descriptors = 40;
    FileDescriptor folder(open(root.c_str(), O_RDONLY | O_DIRECTORY));
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(mkdirat(folder.get(), name, 0755), 0);
        folder = FileDescriptor(openat(folder.get(), name, O_RDONLY | O_DIRECTORY));
        ASSERT_EQ(mknodat(folder.get(), "z", S_IFREG | 0644, 0), 0);
    }
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{.rlim_cur = descriptors, .rlim_max = before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    int files = 0;
    std::size_t longest = 0;
    Trace failures;
    const auto reader = makeTreeSource()->open(root);
    while (const TreeEvent* event = reader->next()) {
        if (event->error != 0) failures.push_back(textOf(*event));
        if (event->kind == Kind::file) ++files;
        longest = std::max(longest, event->path.size());
    }
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_THAT(failures, testing::IsEmpty());
    EXPECT_EQ(files, depth);
    EXPECT_EQ(longest, depth * (std::strlen(name) + 1) + 1);
}

TEST_F(TreeReaderTest, AFolderOfManyEntriesIsReadWhole) {
    constexpr int count = 2'500;
    for (int n = 0; n < count; ++n) writeFile(root / fmt::format("entry {}", n * 7919 % count));
    const auto events = trace(root);
    EXPECT_EQ(events.size(), count + 2);
    EXPECT_TRUE(std::is_sorted(events.begin() + 1, events.end() - 1));
}

TEST_F(TreeReaderTest, OtherDevicesAndFoldersWithinThemselvesAreNotEntered) {
    SKIP_UNLESS_MOUNTS_WORK();
    for (const auto* folder : {"other device", "same device", "z/itself"})
        fs::create_directories(root / folder);
    fs::create_directory(root / "elsewhere");
    writeFile(root / "elsewhere/file");
    const auto memory = TestMount::memory(root / "other device");
    writeFile(root / "other device/file");
    const auto bound = TestMount::bind(root / "elsewhere", root / "same device");
    const auto itself = TestMount::bind(root / "z", root / "z/itself");
    EXPECT_THAT(trace(root),
                ElementsAre("D ", "D elsewhere", "F elsewhere/file 0", "E elsewhere", "D other device",
                            "E other device", "D same device", "F same device/file 0", "E same device", "D z",
                            "O z/itself", "E z", "E "));
}

class TreeReaderCreation : public TreeReaderTest {
protected:
    /// What is told of a file whose modification time was set.
    static UnixTime createdAs(const fs::path& folder, timespec modified) {
        writeFile(folder / "file");
        const timespec times[] = {modified, modified};
        utimensat(AT_FDCWD, (folder / "file").c_str(), times, 0);
        UnixTime created = 0;
        const auto reader = makeTreeSource()->open(folder);
        while (const TreeEvent* event = reader->next())
            if (event->kind == Kind::file) created = event->status.created;
        return created;
    }

    static constexpr timespec past{.tv_sec = 1'000'000'000, .tv_nsec = 250'000'000};
    static constexpr timespec future{.tv_sec = 4'000'000'000, .tv_nsec = 0};
};

TEST_F(TreeReaderCreation, IsWhenTheFileWasMade) {
    const auto before = systemNow() - 1;  // file systems count in ticks
    const auto created = createdAs(root, past);
    struct statx status {};
    statx(AT_FDCWD, (root / "file").c_str(), 0, STATX_BTIME, &status);
    if ((status.stx_mask & STATX_BTIME) == 0) GTEST_SKIP() << "no creation times here";
    EXPECT_GE(created, before);
    EXPECT_LE(created, systemNow());
}

TEST_F(TreeReaderCreation, IsTheEarlierOfTheOtherTimesWhereItIsNotKept) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto mountPoint = root / "mounted";
    fs::create_directory(mountPoint);
    // Inodes of this size have no room for it.
    if (!makeImage(root / "image", "ext4 -I 128")) GTEST_SKIP() << "no tools for ext4";
    const auto mounted = TestMount::image(root / "image", mountPoint);
    EXPECT_EQ(createdAs(mountPoint, past), 1'000'000'000);  // nor for fractions
    EXPECT_LE(createdAs(mountPoint, future), systemNow());
}

// What changes between two events of a reading.
struct RaceCase {
    std::string name;
    std::string after;  // the event
    std::function<void(const fs::path&)> change;
    Trace expected;
};

class TreeReaderRace : public TreeReaderTest, public testing::WithParamInterface<RaceCase> {};

TEST_P(TreeReaderRace, IsTold) {
    writeFile(root / "a");
    fs::create_directory(root / "b");
    writeFile(root / "b/x");
    writeFile(root / "c");
    const auto reader = makeTreeSource()->open(root);
    const auto events = trace(*reader, [&](const std::string& event) {
        if (event == GetParam().after) GetParam().change(root);
    });
    EXPECT_EQ(events, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(TreeReader, TreeReaderRace,
                         testing::Values(RaceCase{"FileGone",
                                                  "F a 0",
                                                  [](const fs::path& root) { fs::remove(root / "c"); },
                                                  {"D ", "F a 0", "D b", "F b/x 0", "E b", "E "}},
                                         RaceCase{"FolderGone",
                                                  "F a 0",
                                                  [](const fs::path& root) { fs::remove_all(root / "b"); },
                                                  {"D ", "F a 0", "N b 2", "F c 0", "E "}},
                                         RaceCase{"FolderGoneBeforeItIsEntered",
                                                  "D b",
                                                  [](const fs::path& root) { fs::remove_all(root / "b"); },
                                                  {"D ", "F a 0", "D b", "U b 2", "F c 0", "E "}},
                                         RaceCase{"FolderReplaced",
                                                  "D b",
                                                  [](const fs::path& root) {
                                                      fs::rename(root / "b", root / "old");
                                                      fs::create_directory(root / "b");
                                                  },
                                                  {"D ", "F a 0", "D b", "U b 116", "F c 0", "E "}},
                                         RaceCase{"FolderReplacedByALink",
                                                  "D b",
                                                  [](const fs::path& root) {
                                                      fs::rename(root / "b", root / "old");
                                                      fs::create_directory_symlink("old", root / "b");
                                                  },
                                                  {"D ", "F a 0", "D b", "U b 20", "F c 0", "E "}},
                                         RaceCase{"FileBecomesFolder",
                                                  "F b/x 0",
                                                  [](const fs::path& root) {
                                                      fs::remove(root / "c");
                                                      fs::create_directories(root / "c/new");
                                                  },
                                                  {"D ", "F a 0", "D b", "F b/x 0", "E b", "N c 116", "E "}},
                                         RaceCase{"FolderBecomesFile",
                                                  "F a 0",
                                                  [](const fs::path& root) {
                                                      fs::remove_all(root / "b");
                                                      writeFile(root / "b");
                                                  },
                                                  {"D ", "F a 0", "N b 116", "F c 0", "E "}},
                                         RaceCase{"FileBecomesLink",
                                                  "F a 0",
                                                  [](const fs::path& root) {
                                                      fs::remove(root / "c");
                                                      fs::create_symlink("a", root / "c");
                                                  },
                                                  {"D ", "F a 0", "D b", "F b/x 0", "E b", "O c", "E "}},
                                         RaceCase{"FolderMovedWhileItIsRead",
                                                  "F b/x 0",
                                                  [](const fs::path& root) {
                                                      fs::rename(root / "b", root / "moved");
                                                  },
                                                  {"D ", "F a 0", "D b", "F b/x 0", "E b", "F c 0", "E "}}),
                         [](const auto& test) { return test.param.name; });

TEST_F(TreeReaderTest, WhatIsLeftOfAFolderThatCannotBeFoundAgainIsUnreadable) {
    fs::path innermost = root;
    for (int level = 1; level <= 40; ++level) {
        innermost /= "d";
        fs::create_directory(innermost);
        if (level == 3 || level == 30) writeFile(innermost / "z");
    }
    writeFile(innermost / "last");
    writeFile(root / "z");
    const TempFolder elsewhere;
    const auto reader = makeTreeSource()->open(root);
    auto events = trace(*reader, [&](const std::string& event) {
        if (event.find("last") != std::string::npos) fs::rename(root / "d/d/d/d", elsewhere.path() / "moved");
    });
    // No way leads back to the third level. The second and the first had nothing left.
    std::erase_if(events, [](const auto& event) { return event[0] == 'D' || event[0] == 'E'; });
    EXPECT_THAT(events,
                ElementsAre(testing::EndsWith("last 0"), testing::EndsWith("z 0"), "U d/d/d 116", "F z 0"));
}

// The listing of "b" is changed on its way to the reader.
class TreeReaderListing : public TreeReaderTest {
protected:
    TreeReaderListing() {
        fs::create_directory(root / "b");
        writeFile(root / "b/x");
        fs::create_directory(root / "b/x-folder");
        writeFile(root / "c");
    }

    Trace traceWith(const ListingCall& call, const PathSet& elsewhere = {}) const {
        LinuxTreeReader reader(root, isDatalessHere, call, elsewhere);
        return trace(reader);
    }

    /// A listing that does not tell what the entries are.
    static ssize_t listWithoutKinds(int folder, void* buffer, std::size_t size) {
        const auto length = getdents64(folder, buffer, size);
        for (ssize_t at = 0; at < length;) {
            auto* entry = reinterpret_cast<dirent64*>(static_cast<char*>(buffer) + at);
            entry->d_type = DT_UNKNOWN;
            at += entry->d_reclen;
        }
        return length;
    }
};

TEST_F(TreeReaderListing, ThatBreaksOffTellsNothingOfTheFolder) {
    int calls = 0;
    const auto breakOffInB = [&](int folder, void* buffer, std::size_t size) -> ssize_t {
        if (++calls != 4) return getdents64(folder, buffer, size);  // the root's two, then the first of "b"
        errno = EIO;
        return -1;
    };
    EXPECT_THAT(traceWith(breakOffInB), ElementsAre("D ", "D b", "U b 5", "F c 0", "E "));
}

TEST_F(TreeReaderListing, MayLeaveOutTheKindsAndNameAnEntryTwice) {
    const auto expected = trace(root);
    bool isRepeat = false;
    const auto forgetful = [&](int folder, void* buffer, std::size_t size) -> ssize_t {
        const auto length = listWithoutKinds(folder, buffer, size);
        if (length == 0 && !std::exchange(isRepeat, !isRepeat)) {
            lseek(folder, 0, SEEK_SET);
            return getdents64(folder, buffer, size);
        }
        return length;
    };
    EXPECT_EQ(traceWith(forgetful), expected);
}

TEST_F(TreeReaderListing, OfAFolderElsewhereIsNeverAskedFor) {
    for (const ListingCall& list : {ListingCall(getdents64), ListingCall(listWithoutKinds)}) {
        EXPECT_THAT(traceWith(list, {"b/x-folder"}),
                    ElementsAre("D ", "D b", "F b/x 0", "O b/x-folder", "E b", "F c 0", "E "));
        EXPECT_THAT(traceWith(list, {"b"}), ElementsAre("D ", "O b", "F c 0", "E "));
    }
}

}  // namespace
}  // namespace brindle
