#include "platform/linux/FolderLister.h"
#include "platform/linux/TreeReader.h"
#include "support/Program.h"
#include "support/RandomTree.h"
#include "support/Rounds.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <utility>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using Kind = TreeEvent::Kind;
using Trace = std::vector<std::string>;
using testing::ElementsAre;

void writeFile(const fs::path& path, const char* contents = "") {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << contents;
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

/// Looks at nothing before its event is asked for.
std::unique_ptr<TreeSource> stepByStep() {
    return makeTreeSource(isDatalessHere, false);
}

class TreeReaderTest : public testing::Test {
protected:
    TreeReaderTest() { fs::permissions(root, fs::perms(0755)); }

    const TempFolder temporary;
    const fs::path root = temporary.path();
};

TEST_F(TreeReaderTest, TellsOfRandomTreesWhatFindTellsInTheOrderOfWholePaths) {
    for (unsigned seed = 0; seed < 6; ++seed) {
        RandomTree tree(root / std::to_string(seed), seed);
        tree.change(100);
        // Above what one call lists.
        for (int n = 0; seed == 0 && n < 2'000; ++n) writeFile(tree.root() / fmt::format("entry {}", n));

        std::map<std::string, std::string> found;
        std::istringstream output(
            runProgram({.arguments = {"find", tree.root(), "-type", "f", "-printf", "%P\\0%s %b %n %i\\0"},
                        .environment = {}})
                .output);
        for (std::string path; std::getline(output, path, '\0');) std::getline(output, found[path], '\0');

        std::vector<std::pair<std::string, std::string>> told;
        const auto reader = makeTreeSource()->open(tree.root());
        while (const TreeEvent* event = reader->next()) {
            const auto& status = event->status;
            if (event->kind == Kind::file)
                told.emplace_back(event->path,
                                  fmt::format("{} {} {} {}", status.size, status.allocatedBytes / 512,
                                              status.links, status.inode));
        }
        EXPECT_EQ(told, decltype(told)(found.begin(), found.end())) << seed;
    }
}

TEST_F(TreeReaderTest, WhatIsReadAheadIsWhatIsReadStepByStep) {
    RandomTree tree(root / "tree", testSeed());
    tree.change(150);
    using Told = std::vector<std::pair<std::string, EntryStatus>>;
    // Also what is skipped while it was read already, or is being read; and by a reader that comes so late
    // that files were asked for their status ahead too.
    for (const int skipped : {0, 2, 3, 7}) {
        const auto toldBy = [&](const std::unique_ptr<TreeSource>& trees, std::chrono::milliseconds late) {
            Told told;
            int folders = 0;
            const auto reader = trees->open(tree.root());
            while (const TreeEvent* event = reader->next()) {
                told.emplace_back(textOf(*event), event->kind == Kind::file ? event->status : EntryStatus());
                if (event->level == 0) std::this_thread::sleep_for(late);
                if (event->kind == Kind::directory && skipped > 0 && ++folders % skipped == 0) reader->skip();
            }
            return told;
        };
        const Told expected = toldBy(stepByStep(), {});
        EXPECT_EQ(toldBy(makeTreeSource(), {}), expected) << skipped;
        EXPECT_EQ(toldBy(makeTreeSource(), std::chrono::milliseconds(20)), expected) << skipped;
    }
}

TEST_F(TreeReaderTest, AReadingMayBeGivenUpAnywhere) {
    for (int n = 0; n < 200; ++n) writeFile(root / fmt::format("{}/{}/file", n % 20, n));
    for (const int last : {0, 1, 40, 400}) {
        const auto reader = makeTreeSource()->open(root);
        for (int event = 0; event < last; ++event) ASSERT_NE(reader->next(), nullptr);
    }
}

TEST_F(TreeReaderTest, TellsEachKindOfEntryAndOpensFoldersOnly) {
    fs::create_directories(root / "folder/empty");
    writeFile(root / "file", "abc");
    fs::create_hard_link(root / "file", root / "folder/second name");
    fs::create_symlink("file", root / "link to file");
    fs::create_symlink("loop", root / "loop");
    fs::create_directory_symlink(root, root / "folder/up");
    ASSERT_EQ(mknod((root / "pipe").c_str(), S_IFIFO | 0644, 0), 0);  // opening it would wait for a writer
    ASSERT_EQ(mknod((root / "socket").c_str(), S_IFSOCK | 0644, 0), 0);
    const auto told = ElementsAre("D ", "F file 3", "D folder", "D folder/empty", "E folder/empty",
                                  "F folder/second name 3", "O folder/up", "E folder", "O link to file",
                                  "O loop", "O pipe", "O socket", "E ");
    EXPECT_THAT(trace(root), told);
    EXPECT_THAT(trace(root / "folder/up"), told) << "a link as the root";
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
    EXPECT_NE(trees->identify(root), trees->identify("/"));
}

TEST_F(TreeReaderTest, PathsBelowTheTopOfTheFileSystemBeginWithoutSlash) {
    const auto reader = makeTreeSource()->open("/");
    while (const TreeEvent* event = reader->next()) {
        if (event->level == 1 && event->kind == Kind::directory) reader->skip();
        EXPECT_EQ(event->path.find('/'), std::string_view::npos) << event->path;
    }
}

TEST_F(TreeReaderTest, SkippedAndDatalessFoldersEndAtOnce) {
    for (const auto* file : {"dataless/file", "read/file", "skipped/file"}) writeFile(root / file);
    const auto reader =
        makeTreeSource([](const TreeEvent& event) { return event.path == "dataless"; })->open(root);
    const auto skip = [&](const std::string& event) {
        if (event == "D skipped") reader->skip();
    };
    EXPECT_THAT(trace(*reader, skip), ElementsAre("D ", "D dataless", "E dataless", "D read", "F read/file 0",
                                                  "E read", "D skipped", "E skipped", "E "));
}

TEST_F(TreeReaderTest, FoldersWithoutPermissionAreToldWithTheRefusal) {
    for (const auto* folder : {"closed", "listable", "open", "searchable"}) writeFile(root / folder / "file");
    fs::permissions(root / "closed", fs::perms(0));
    fs::permissions(root / "listable", fs::perms(0744));
    fs::permissions(root / "searchable", fs::perms(0711));
    const Trace expected{
        "D ",     "D closed",      "U closed 13", "D listable",   "N listable/file 13", "E listable",
        "D open", "F open/file 0", "E open",      "D searchable", "U searchable 13",    "E "};
    EXPECT_TRUE(holdsUnprivileged([&] { return trace(root) == expected; }));
}

TEST_F(TreeReaderTest, LeavesTheAccessTimesOfFoldersAlone) {
    const timespec then[] = {{.tv_sec = 1, .tv_nsec = 0}, {.tv_sec = 2, .tv_nsec = 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, root.c_str(), then, 0), 0);
    trace(root);
    struct stat status {};
    ASSERT_EQ(stat(root.c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, 1);
}

TEST_F(TreeReaderTest, ReadsDeeperThanPathsAndDescriptorsReach) {
    SKIP_UNLESS_MOUNTS_WORK();
    const auto memory = TestMount::memory(root);  // taken away at once, where deleting needs descriptors
    constexpr int depth = 4000;
    FileDescriptor folder(open(root.c_str(), O_RDONLY | O_DIRECTORY));
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(mkdirat(folder.get(), "abcd", 0755), 0);
        folder = FileDescriptor(openat(folder.get(), "abcd", O_RDONLY | O_DIRECTORY));
        ASSERT_EQ(mknodat(folder.get(), "z", S_IFREG | 0644, 0), 0);
    }
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{.rlim_cur = 100, .rlim_max = before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    int files = 0;
    const auto reader = makeTreeSource()->open(root);
    while (const TreeEvent* event = reader->next()) {
        EXPECT_EQ(event->error, 0) << event->path.size();
        if (event->kind == Kind::file) ++files;
    }
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(files, depth);
}

TEST_F(TreeReaderTest, OtherDevicesAndFoldersWithinThemselvesAreNotEntered) {
    SKIP_UNLESS_MOUNTS_WORK();
    for (const auto* folder : {"other device", "same device", "z/itself"})
        fs::create_directories(root / folder);
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

/// What is told of a new file whose modification time was set.
UnixTime toldCreationTime(const fs::path& folder, time_t modified) {
    writeFile(folder / "file");
    const timespec times[] = {{.tv_sec = modified, .tv_nsec = 0}, {.tv_sec = modified, .tv_nsec = 0}};
    utimensat(AT_FDCWD, (folder / "file").c_str(), times, 0);
    UnixTime created = 0;
    const auto reader = makeTreeSource()->open(folder);
    while (const TreeEvent* event = reader->next())
        if (event->kind == Kind::file) created = event->status.created;
    return created;
}

TEST_F(TreeReaderTest, TheCreationTimeIsTheEarlierOfTheOthersWhereItIsNotKept) {
    SKIP_UNLESS_MOUNTS_WORK();
    constexpr time_t past = 1'000'000'000;
    constexpr time_t future = 4'000'000'000;
    for (const auto* folder : {"keeps it", "does not"}) fs::create_directory(root / folder);
    const auto before = systemNow() - 1;  // file systems count in ticks
    // Inodes of 128 bytes have no room for it.
    if (!makeImage(root / "1", "ext4") || !makeImage(root / "2", "ext4", "-I 128"))
        GTEST_SKIP() << "no tools for ext4";
    const auto keeping = TestMount::image(root / "1", root / "keeps it");
    const auto other = TestMount::image(root / "2", root / "does not");
    EXPECT_GE(toldCreationTime(root / "keeps it", past), before);
    EXPECT_EQ(toldCreationTime(root / "does not", past), past);
    EXPECT_LE(toldCreationTime(root / "does not", future), systemNow());
}

TEST_F(TreeReaderTest, WhatChangesBetweenTwoEventsIsTold) {
    const struct {
        const char* after;
        const char* change;
        Trace told;
    } cases[] = {
        {"F a 0", "rm c", {"F a 0", "D b", "F b/x 0", "E b"}},
        {"F a 0", "rm -r b", {"F a 0", "N b 2", "F c 0"}},
        {"D b", "rm -r b", {"F a 0", "D b", "U b 2", "F c 0"}},
        {"D b", "mv b old; mkdir b", {"F a 0", "D b", "U b 116", "F c 0"}},
        {"D b", "mv b old; ln -s old b", {"F a 0", "D b", "U b 20", "F c 0"}},
        {"F b/x 0", "rm c; mkdir -p c/new", {"F a 0", "D b", "F b/x 0", "E b", "N c 116"}},
        {"F a 0", "rm -r b; touch b", {"F a 0", "N b 116", "F c 0"}},
        {"F a 0", "ln -sf a c", {"F a 0", "D b", "F b/x 0", "E b", "O c"}},
        {"F b/x 0", "mv b moved", {"F a 0", "D b", "F b/x 0", "E b", "F c 0"}},
    };
    for (const auto& [after, change, told] : cases) {
        const TempFolder tree;
        for (const auto* file : {"a", "b/x", "c"}) writeFile(tree.path() / file);
        const auto command = "cd '" + tree.path().native() + "' && " + change;
        const auto reader = stepByStep()->open(tree.path());
        auto events = trace(*reader, [&, when = std::string(after)](const std::string& event) {
            if (event == when) {
                ASSERT_EQ(std::system(command.c_str()), 0);
            }
        });
        std::erase_if(events, [](const auto& event) { return event == "D " || event == "E "; });
        EXPECT_EQ(events, told) << "after " << after << ": " << change;
    }
}

TEST_F(TreeReaderTest, WhatIsLeftOfAFolderThatCannotBeFoundAgainIsUnreadable) {
    fs::path innermost = root;
    for (int level = 1; level <= 40; ++level) innermost /= "d";
    for (const auto& file : {innermost / "last", innermost.parent_path() / "z", root / "d/d/d/z", root / "z"})
        writeFile(file);
    const TempFolder elsewhere;
    const auto reader = stepByStep()->open(root);
    auto events = trace(*reader, [&](const std::string& event) {
        if (event.find("last") != std::string::npos) fs::rename(root / "d/d/d/d", elsewhere.path() / "moved");
    });
    // No way leads back to the third level. The second and the first had nothing left.
    std::erase_if(events, [](const auto& event) { return event[0] == 'D' || event[0] == 'E'; });
    EXPECT_THAT(events,
                ElementsAre(testing::EndsWith("last 0"), testing::EndsWith("z 0"), "U d/d/d 116", "F z 0"));
}

// The listings are changed on their way to the reader.
class TreeReaderListing : public TreeReaderTest {
protected:
    TreeReaderListing() {
        writeFile(root / "b/x");
        fs::create_directory(root / "b/x-folder");
        writeFile(root / "c");
    }

    [[nodiscard]] Trace traceWith(const ListingCall& call, const PathSet& elsewhere = {}) const {
        LinuxTreeReader reader(std::make_unique<FolderLister>(root, isDatalessHere, call, elsewhere),
                               isDatalessHere);
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

TEST_F(TreeReaderListing, MayNameAnEntryTwiceAndLeaveOutTheKinds) {
    bool isRepeat = false;
    const auto repeating = [&](int folder, void* buffer, std::size_t size) -> ssize_t {
        const auto length = listWithoutKinds(folder, buffer, size);
        if (length != 0 || std::exchange(isRepeat, !isRepeat)) return length;
        lseek(folder, 0, SEEK_SET);
        return getdents64(folder, buffer, size);
    };
    EXPECT_EQ(traceWith(repeating), trace(root));
    // A folder on another computer is not asked what it is.
    EXPECT_THAT(traceWith(listWithoutKinds, {"b/x-folder"}),
                ElementsAre("D ", "D b", "F b/x 0", "O b/x-folder", "E b", "F c 0", "E "));
    EXPECT_THAT(traceWith(getdents64, {"b"}), ElementsAre("D ", "O b", "F c 0", "E "));
}

}  // namespace
}  // namespace brindle
