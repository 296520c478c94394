#include "scan/FolderScanner.h"
#include "support/FakeTree.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using Reason = ScanError::Reason;
using testing::ElementsAre;
using testing::IsEmpty;

/// A walk and all that it told. Its clock goes on by `tick` seconds at each look.
struct Walked {
    std::optional<ScanReport> report;
    std::optional<Reason> failure;
    bool isCancelled = false;
    std::vector<ScanEntry> entries;
    std::vector<std::size_t> batches;
    std::vector<ScanProgress> progress;

    [[nodiscard]] std::vector<std::string> paths() const {
        std::vector<std::string> all;
        for (const auto& entry : entries) all.push_back(entry.relativePath);
        return all;
    }
};

struct WalkOptions {
    ScanRules rules;
    double tick = 0;
    std::function<void()> onProgress = [] {};
};

Walked walk(const TreeSource& trees, const std::string& root = "/root", const WalkOptions& options = {},
            const CancellationFlag& cancel = {}) {
    Walked walked;
    double now = 1000;
    const FolderScanner scanner(trees, [&] { return now += options.tick; });
    try {
        walked.report = scanner.scan(
            root, options.rules, cancel,
            [&](const ScanProgress& progress) {
                walked.progress.push_back(progress);
                options.onProgress();
            },
            [&](std::span<const ScanEntry> batch) {
                walked.batches.push_back(batch.size());
                walked.entries.insert(walked.entries.end(), batch.begin(), batch.end());
            });
    } catch (const ScanError& error) {
        walked.failure = error.reason;
    } catch (const Cancelled&) {
        walked.isCancelled = true;
    }
    return walked;
}

Walked walk(const TreeSource& trees, const WalkOptions& options) {
    return walk(trees, "/root", options);
}

EntryStatus sized(std::int64_t size, std::int64_t allocated = 0) {
    return {.size = size, .allocatedBytes = allocated, .links = 1};
}

EntryStatus linked(std::uint64_t inode, std::int64_t size, std::int64_t allocated) {
    return {.size = size, .allocatedBytes = allocated, .links = 3, .inode = inode};
}

TEST(FolderScanner, AnEmptyFolderGivesZerosAndOneProgress) {
    const auto walked = walk(FakeTree{}, {.tick = 1});
    EXPECT_EQ(walked.report, ScanReport{});
    EXPECT_THAT(walked.batches, IsEmpty());
    EXPECT_THAT(walked.progress, ElementsAre(ScanProgress{.elapsed = 1}));
}

TEST(FolderScanner, HandsOverFullBatchesAndTheRest) {
    const std::vector<std::pair<int, std::vector<std::size_t>>> cases{
        {1, {1}}, {1999, {1999}}, {2000, {2000}}, {2001, {2000, 1}}, {4000, {2000, 2000}}};
    for (const auto& [count, batches] : cases) {
        FakeTree tree;
        tree.files(count, sized(3));
        const auto walked = walk(tree);
        EXPECT_EQ(walked.batches, batches) << count;
        EXPECT_EQ(walked.report->filesSeen, count);
        EXPECT_EQ(walked.report->totalBytes, 3 * count);
        EXPECT_EQ(walked.entries.back().relativePath, fmt::format("file{}", count - 1)) << "reused strings";
    }
}

TEST(FolderScanner, EntriesCarryPathSizeAndCreationTime) {
    FakeTree tree;
    tree.folder("a").file("a/b", {.size = 5, .allocatedBytes = 4096, .links = 1, .created = 12.5});
    tree.endFolder("a");
    const auto walked = walk(tree);
    EXPECT_THAT(walked.entries, ElementsAre(ScanEntry{"a/b", 5, 12.5}));
    EXPECT_EQ(walked.report->allocatedBytes, 4096);
}

TEST(FolderScanner, ExcludedPathsCountNowhereAndOnlyAsWholePaths) {
    FakeTree tree;
    tree.folder("out").file("out/lost", sized(1, 1)).endFolder("out");
    tree.file("out.txt", sized(2, 2));
    tree.folder("sub")
        .folder("sub/out")
        .file("sub/out/kept", sized(4, 4))
        .endFolder("sub/out")
        .endFolder("sub");
    tree.noStatus("unknown", EIO);
    const auto walked = walk(tree, {.rules = {.excludedPaths = {"out", "out.txt", "unknown"}}});
    EXPECT_THAT(walked.paths(), ElementsAre("sub/out/kept"));
    EXPECT_EQ(walked.report, (ScanReport{.filesSeen = 1, .totalBytes = 4, .allocatedBytes = 4}));
}

TEST(FolderScanner, UncountedTreesGiveTheirAllocatedSizeOnly) {
    const ScanRules rules{.uncountedPaths = {"bin", "bin/inner", "history", "program"},
                          .trashPaths = {"bin"}};
    FakeTree tree;
    tree.folder("bin").file("bin/old", sized(1, 1)).folder("bin/inner").file("bin/inner/older", sized(2, 2));
    tree.unreadable("bin/inner", EACCES).noStatus("bin/odd", EACCES).other("bin/link");
    tree.file("bin/z", sized(4, 4)).endFolder("bin");
    tree.file("counted", sized(8, 8));
    tree.folder("history").file("history/base", sized(16, 16)).endFolder("history");
    tree.file("program", sized(32, 32));
    EXPECT_EQ(walk(tree, {.rules = rules}).report,
              (ScanReport{.filesSeen = 1, .totalBytes = 8, .allocatedBytes = 63, .trashBytes = 7}));
}

TEST(FolderScanner, CountsOnAfterAnUncountedFolderThatCannotBeRead) {
    FakeTree tree;
    tree.folder("bin").unreadable("bin", EACCES).file("counted", sized(1, 1)).folder("folder");
    tree.file("folder/counted", sized(2, 2)).endFolder("folder");
    EXPECT_EQ(walk(tree, {.rules = {.uncountedPaths = {"bin"}, .trashPaths = {"bin"}}}).report,
              (ScanReport{.filesSeen = 2, .totalBytes = 3, .allocatedBytes = 3}));
}

TEST(FolderScanner, AnExcludedPathThatIsAlsoUncountedIsNotWalked) {
    FakeTree tree;
    tree.folder("a").file("a/b", sized(1, 1)).endFolder("a");
    EXPECT_EQ(walk(tree, {.rules = {.excludedPaths = {"a"}, .uncountedPaths = {"a"}}}).report, ScanReport{});
}

TEST(FolderScanner, DiskSpaceOfAFileWithSeveralNamesCountsOnce) {
    FakeTree tree;
    tree.folder("bin").file("bin/1", linked(7, 10, 100)).endFolder("bin");
    tree.file("file/2", linked(7, 10, 100)).file("file/3", linked(7, 10, 100)).file("other", linked(8, 1, 1));
    const auto walked = walk(tree, {.rules = {.uncountedPaths = {"bin"}, .trashPaths = {"bin"}}});
    EXPECT_EQ(walked.report,
              (ScanReport{.filesSeen = 3, .totalBytes = 21, .allocatedBytes = 101, .trashBytes = 100}));
}

TEST(FolderScanner, DatalessFilesCountAndDatalessFoldersAreListed) {
    EntryStatus dataless = sized(9);
    dataless.isDataless = true;
    FakeTree tree;
    tree.folder("z", dataless).file("z/unseen", sized(1)).endFolder("z").file("file", dataless);
    tree.folder("a", dataless).endFolder("a").folder("out", dataless).endFolder("out");
    EXPECT_EQ(
        walk(tree, {.rules = {.excludedPaths = {"out"}}}).report,
        (ScanReport{.filesSeen = 1, .totalBytes = 9, .cloudOnlyBytes = 9, .cloudOnlyFolders = {"a", "z"}}));
}

TEST(FolderScanner, UnreadableFoldersAreListedOnceAndARefusalStays) {
    FakeTree tree;
    tree.folder("a").unreadable("a", EIO).noStatus("b", EACCES).unreadable("b", EIO);
    tree.unreadable("c", EIO).unreadable("c", EPERM).unreadable("uncounted", EIO);
    EXPECT_THAT(walk(tree, {.rules = {.uncountedPaths = {"uncounted"}}}).report->unreadable,
                testing::UnorderedElementsAre(UnreadableFolder{"a", false}, UnreadableFolder{"b", true},
                                              UnreadableFolder{"c", true}));
}

struct RootCase {
    std::string name;
    std::function<void(FakeTree&)> spoil;
    Reason expected;
};

class RootFailure : public testing::TestWithParam<RootCase> {};

TEST_P(RootFailure, EndsTheWalk) {
    FakeTree tree;
    tree.file("file");
    GetParam().spoil(tree);
    const auto walked = walk(tree);
    EXPECT_EQ(walked.failure, GetParam().expected);
    EXPECT_THAT(walked.progress, IsEmpty());
}

void changeTheRootAtTheEnd(FakeTree& tree, std::function<void(FakeTree&)> change) {
    tree.beforeEvent = [&tree, change = std::move(change)](int eventsRead) {
        if (eventsRead == 3) change(tree);
    };
}

INSTANTIATE_TEST_SUITE_P(
    FolderScanner, RootFailure,
    testing::Values(
        RootCase{"Absent", [](FakeTree& tree) { tree.identifyError = ENOENT; }, Reason::missing},
        RootCase{"HiddenByAFolderAbove", [](FakeTree& tree) { tree.identifyError = EACCES; },
                 Reason::missing},
        RootCase{"ListingRefused", [](FakeTree& tree) { tree.listError = EACCES; }, Reason::accessDenied},
        RootCase{"ListingNotPermitted", [](FakeTree& tree) { tree.listError = EPERM; }, Reason::accessDenied},
        RootCase{"ListingFailed", [](FakeTree& tree) { tree.listError = EIO; }, Reason::missing},
        RootCase{"ReadingRefused", [](FakeTree& tree) { tree.unreadable("", EACCES); }, Reason::accessDenied},
        RootCase{"ReadingFailed", [](FakeTree& tree) { tree.unreadable("", EIO); }, Reason::missing},
        RootCase{"StatusRefused", [](FakeTree& tree) { tree.noStatus("", EPERM); }, Reason::accessDenied},
        RootCase{"GoneAtTheEnd",
                 [](FakeTree& tree) {
                     changeTheRootAtTheEnd(tree, [](FakeTree& at) { at.identifyError = ENOENT; });
                 },
                 Reason::missing},
        RootCase{"ReplacedAtTheEnd",
                 [](FakeTree& tree) { changeTheRootAtTheEnd(tree, [](FakeTree& at) { ++at.number.inode; }); },
                 Reason::missing},
        RootCase{
            "OtherDeviceAtTheEnd",
            [](FakeTree& tree) { changeTheRootAtTheEnd(tree, [](FakeTree& at) { ++at.number.device; }); },
            Reason::missing}),
    [](const auto& test) { return test.param.name; });

TEST(FolderScanner, CancellationIsNoticedWithin512EntriesAndAtTheEnd) {
    const std::vector<std::pair<int, int>> setAndNoticed{
        {0, 512}, {511, 512}, {512, 1024}, {1500, 1536}, {2002, 2002}};
    for (const auto& [setAfter, noticedAfter] : setAndNoticed) {
        CancellationFlag cancel;
        FakeTree tree;
        tree.files(2000);
        tree.beforeEvent = [&, when = setAfter](int eventsRead) {
            if (eventsRead == when) cancel.set();
        };
        const auto walked = walk(tree, "/root", {}, cancel);
        EXPECT_TRUE(walked.isCancelled) << setAfter;
        EXPECT_EQ(tree.eventsRead, noticedAfter) << setAfter;
    }
}

TEST(FolderScanner, ReportsProgressEvery256FilesButNotMoreThanFourTimesASecond) {
    struct ProgressCase {
        double tick;
        std::vector<std::int64_t> filesSeen;
    };
    const std::vector<ProgressCase> cases{
        {0.125, {512, 1024, 1100}}, {0.25, {256, 512, 768, 1024, 1100}}, {0, {1100}}};
    for (const auto& [tick, filesSeen] : cases) {
        FakeTree tree;
        tree.files(1100, sized(2));
        const auto walked = walk(tree, {.tick = tick});
        std::vector<std::int64_t> seen;
        for (const auto& progress : walked.progress) {
            seen.push_back(progress.filesSeen);
            EXPECT_EQ(progress.bytesSeen, 2 * progress.filesSeen);
        }
        EXPECT_EQ(seen, filesSeen) << tick;
        EXPECT_EQ(walked.progress.back().elapsed, 5 * tick) << "four looks and the last";
    }
}

TEST(FolderScanner, WhatASinkThrowsEndsTheWalk) {
    FakeTree tree;
    tree.files(3000);
    const auto refuse = [](std::span<const ScanEntry>) { throw std::runtime_error("full"); };
    EXPECT_THROW(static_cast<void>(FolderScanner(tree).scan(
                     "/root", {}, {}, [](const auto&) {}, refuse)),
                 std::runtime_error);
    EXPECT_EQ(tree.eventsRead, 2001);
}

TEST(FolderScanner, LetsOthersReadFirstWhileItWalks) {
    // As ioprio_set(2) gives them.
    constexpr int ofProcess = 1;
    constexpr int idleClass = 3;
    constexpr int classShift = 13;
    const auto ioPriority = [] { return syscall(SYS_ioprio_get, ofProcess, 0); };
    const auto before = ioPriority();
    FakeTree tree;
    long during = before;
    tree.beforeEvent = [&](int /*eventsRead*/) {
        during = ioPriority();
        throw std::runtime_error("stop");
    };
    EXPECT_THROW(walk(tree), std::runtime_error);
    EXPECT_EQ(during >> classShift, idleClass);
    EXPECT_EQ(ioPriority(), before);
}

TEST(PermissionError, IsFoundAtAnyDepthOfTheError) {
    const auto isRefused = [](int code) {
        try {
            try {
                throw std::system_error(code, std::generic_category());
            } catch (...) {
                std::throw_with_nested(std::runtime_error("outer"));
            }
        } catch (const std::exception& outer) {
            return isPermissionError(outer);
        }
        return false;
    };
    EXPECT_TRUE(isRefused(EACCES));
    EXPECT_TRUE(isRefused(EPERM));
    EXPECT_FALSE(isRefused(ENOENT));
    EXPECT_TRUE(isPermissionError(std::system_error(EPERM, std::generic_category())));
    EXPECT_FALSE(isPermissionError(std::runtime_error("other")));
}

// The same walk on a real file system, whose root changes in the middle of it.
class ScannerOnDisk : public testing::Test {
protected:
    ScannerOnDisk() {
        fs::create_directory(root);
        for (int n = 0; n < 600; ++n) std::ofstream(root / fmt::format("file{:03}", n)) << "12345";
    }

    Walked walkAndDo(const std::function<void()>& change) const {
        bool isFirst = true;
        return walk(*trees, root, {.tick = 1, .onProgress = [&] {
                                       if (std::exchange(isFirst, false)) change();
                                   }});
    }

    const TempFolder temporary;
    const fs::path root = temporary.path() / "root";
    const std::unique_ptr<TreeSource> trees = makeTreeSource();
};

TEST_F(ScannerOnDisk, TheSameFolderReplacedByAnotherIsMissing) {
    const auto replace = [&] {
        fs::rename(root, temporary.path() / "old");
        fs::create_directory(root);
    };
    EXPECT_EQ(walkAndDo(replace).failure, Reason::missing);
}

TEST_F(ScannerOnDisk, ADeletedFolderIsMissing) {
    EXPECT_EQ(walkAndDo([&] { fs::remove_all(root); }).failure, Reason::missing);
}

TEST_F(ScannerOnDisk, FilesDeletedMeanwhileAreSimplyGone) {
    const auto walked = walkAndDo([&] {
        for (int n = 300; n < 600; ++n) fs::remove(root / fmt::format("file{:03}", n));
    });
    ASSERT_TRUE(walked.report);
    EXPECT_EQ(walked.report->filesSeen, 300);
    EXPECT_THAT(walked.report->unreadable, IsEmpty());
}

TEST_F(ScannerOnDisk, WhatIsNoFolderIsMissing) {
    EXPECT_EQ(walk(*trees, temporary.path() / "absent").failure, Reason::missing);
    EXPECT_EQ(walk(*trees, root / "file000").failure, Reason::missing);
}

TEST_F(ScannerOnDisk, CountsThroughALinkAsTheRoot) {
    fs::create_directory_symlink(root, temporary.path() / "link");
    fs::create_symlink("file000", root / "to a file");
    const auto walked = walk(*trees, temporary.path() / "link");
    ASSERT_TRUE(walked.report);
    EXPECT_EQ(walked.report->filesSeen, 600);
    EXPECT_EQ(walked.report->totalBytes, 3000);
    EXPECT_TRUE(std::is_sorted(walked.entries.begin(), walked.entries.end(),
                               [](const auto& a, const auto& b) { return a.relativePath < b.relativePath; }));
}

}  // namespace
}  // namespace brindle
