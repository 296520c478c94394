#include "scan/FolderScanner.h"
#include "support/FakeTree.h"

#include <cerrno>
#include <fmt/format.h>
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
};

Walked walk(const TreeSource& trees, const ScanRules& rules = {}, double tick = 0,
            const CancellationFlag& cancel = {}) {
    Walked walked;
    double now = 1000;
    try {
        walked.report = FolderScanner(trees, [&] { return now += tick; })
                            .scan(
                                "/root", rules, cancel,
                                [&](const ScanProgress& progress) { walked.progress.push_back(progress); },
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

EntryStatus sized(std::int64_t size, std::int64_t allocated = 0) {
    return {.size = size, .allocatedBytes = allocated, .links = 1};
}

EntryStatus linked(std::uint64_t inode, std::int64_t size, std::int64_t allocated) {
    return {.size = size, .allocatedBytes = allocated, .links = 3, .inode = inode};
}

TEST(FolderScanner, HandsOverFullBatchesAndTheRest) {
    const std::vector<std::pair<int, std::vector<std::size_t>>> cases{
        {0, {}}, {1, {1}}, {2000, {2000}}, {2001, {2000, 1}}, {4000, {2000, 2000}}};
    for (const auto& [count, batches] : cases) {
        FakeTree tree;
        tree.files(count, {.size = 3, .links = 1, .created = 12.5});
        const auto walked = walk(tree);
        EXPECT_EQ(walked.batches, batches) << count;
        EXPECT_EQ(walked.report, (ScanReport{.filesSeen = count, .totalBytes = 3 * count}));
        if (count == 0) continue;
        EXPECT_EQ(walked.entries.back(), (ScanEntry{fmt::format("file{}", count - 1), 3, 12.5}));
    }
}

TEST(FolderScanner, ExcludedPathsCountNowhereAndOnlyAsWholePaths) {
    FakeTree tree;
    tree.folder("out").file("out/lost", sized(1, 1)).endFolder("out").file("out.txt", sized(2, 2));
    tree.folder("sub").folder("sub/out").file("sub/out/kept", sized(4, 4));
    tree.endFolder("sub/out").endFolder("sub").noStatus("unknown", EIO);
    const auto walked =
        walk(tree, {.excludedPaths = {"out", "out.txt", "unknown"}, .uncountedPaths = {"out"}});
    EXPECT_EQ(walked.report, (ScanReport{.filesSeen = 1, .totalBytes = 4, .allocatedBytes = 4}));
    EXPECT_THAT(walked.entries, ElementsAre(ScanEntry{"sub/out/kept", 4, 0}));
}

TEST(FolderScanner, UncountedTreesGiveTheirAllocatedSizeOnly) {
    const ScanRules rules{.uncountedPaths = {"bin", "bin/inner", "closed", "history", "program"},
                          .trashPaths = {"bin", "closed"}};
    FakeTree tree;
    tree.folder("bin").file("bin/old", sized(1, 1)).folder("bin/inner").file("bin/inner/older", sized(2, 2));
    tree.unreadable("bin/inner", EACCES).noStatus("bin/odd", EACCES).other("bin/link");
    tree.file("bin/z", sized(4, 4)).endFolder("bin");
    tree.folder("closed").unreadable("closed", EACCES);
    tree.file("counted", sized(8, 8)).folder("folder").file("folder/counted", sized(64, 64));
    tree.endFolder("folder").folder("history").file("history/base", sized(16, 16)).endFolder("history");
    tree.file("program", sized(32, 32));
    EXPECT_EQ(walk(tree, rules).report, (ScanReport{.filesSeen = 2,
                                                    .totalBytes = 72,
                                                    .allocatedBytes = 127,
                                                    .trashBytes = 7,
                                                    .uncounted = {"bin", "closed", "history", "program"}}));
}

TEST(FolderScanner, DiskSpaceOfAFileWithSeveralNamesCountsOnce) {
    FakeTree tree;
    tree.folder("bin").file("bin/1", linked(7, 10, 100)).endFolder("bin");
    tree.file("file/2", linked(7, 10, 100)).file("file/3", linked(7, 10, 100)).file("other", linked(8, 1, 1));
    const auto walked = walk(tree, {.uncountedPaths = {"bin"}, .trashPaths = {"bin"}});
    EXPECT_EQ(walked.report, (ScanReport{.filesSeen = 3,
                                         .totalBytes = 21,
                                         .allocatedBytes = 101,
                                         .trashBytes = 100,
                                         .uncounted = {"bin"}}));
}

TEST(FolderScanner, DatalessFilesCountAndDatalessFoldersAreListed) {
    EntryStatus dataless = sized(9);
    dataless.isDataless = true;
    FakeTree tree;
    tree.folder("z", dataless).file("z/unseen", sized(1)).endFolder("z").file("file", dataless);
    tree.folder("a", dataless).endFolder("a").folder("out", dataless).endFolder("out");
    EXPECT_EQ(
        walk(tree, {.excludedPaths = {"out"}}).report,
        (ScanReport{.filesSeen = 1, .totalBytes = 9, .cloudOnlyBytes = 9, .cloudOnlyFolders = {"a", "z"}}));
}

TEST(FolderScanner, UnreadableFoldersAreListedOnceAndARefusalStays) {
    FakeTree tree;
    tree.folder("a").unreadable("a", EIO).noStatus("b", EACCES).unreadable("b", EIO);
    tree.unreadable("c", EIO).unreadable("c", EPERM).unreadable("uncounted", EIO);
    EXPECT_THAT(walk(tree, {.uncountedPaths = {"uncounted"}}).report->unreadable,
                testing::UnorderedElementsAre(UnreadableFolder{"a", false}, UnreadableFolder{"b", true},
                                              UnreadableFolder{"c", true}));
}

TEST(FolderScanner, ARootThatCannotBeReadOrIsAnotherAtTheEndEndsTheWalk) {
    const struct {
        const char* name;
        bool isAtEnd;
        void (*spoil)(FakeTree& tree);
        Reason expected;
    } cases[] = {
        {"absent", false, [](FakeTree& tree) { tree.identifyError = ENOENT; }, Reason::missing},
        {"hidden", false, [](FakeTree& tree) { tree.identifyError = EACCES; }, Reason::missing},
        {"listing refused", false, [](FakeTree& tree) { tree.listError = EPERM; }, Reason::accessDenied},
        {"listing failed", false, [](FakeTree& tree) { tree.listError = EIO; }, Reason::missing},
        {"reading refused", false, [](FakeTree& tree) { tree.unreadable("", EACCES); }, Reason::accessDenied},
        {"reading failed", false, [](FakeTree& tree) { tree.unreadable("", EIO); }, Reason::missing},
        {"status refused", false, [](FakeTree& tree) { tree.noStatus("", EPERM); }, Reason::accessDenied},
        {"gone", true, [](FakeTree& tree) { tree.identifyError = ENOENT; }, Reason::missing},
        {"replaced", true, [](FakeTree& tree) { ++tree.number.inode; }, Reason::missing},
        {"other device", true, [](FakeTree& tree) { ++tree.number.device; }, Reason::missing},
    };
    for (const auto& [name, isAtEnd, spoil, expected] : cases) {
        FakeTree tree;
        tree.file("file");
        if (isAtEnd)
            tree.beforeEvent = [&, change = spoil](int eventsRead) {
                if (eventsRead == 3) change(tree);
            };
        else
            spoil(tree);
        const auto walked = walk(tree);
        EXPECT_EQ(walked.failure, expected) << name;
        EXPECT_THAT(walked.progress, IsEmpty()) << name;
    }
}

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
        const auto walked = walk(tree, {}, 0, cancel);
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
        const auto walked = walk(tree, {}, tick);
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

}  // namespace
}  // namespace brindle
