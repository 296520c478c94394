#include "scan/WalkAhead.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>

namespace brindle {
namespace {

/// A walk of so many files in batches of uneven sizes, which says when it has ended, however it ends.
Walk walkOf(int files, bool& hasEnded) {
    return [files, &hasEnded](const EntrySink& sink) {
        struct AtEnd {
            bool& flag;
            ~AtEnd() { flag = true; }
        } const atEnd{hasEnded};
        std::vector<ScanEntry> batch;
        for (int i = 0; i < files; ++i) {
            batch.push_back({std::to_string(i), i, i * 0.5});
            if (i % 1'301 != 0 && batch.size() < scanBatchLimit) continue;
            sink(batch);
            batch.clear();
        }
        if (!batch.empty()) sink(batch);
        return ScanReport{.filesSeen = files};
    };
}

TEST(WalkAhead, HandsOnEveryFileInOrderOnTheCallersThread) {
    bool hasEnded = false;
    int seen = 0;
    const auto caller = std::this_thread::get_id();
    const ScanReport report = walkAhead(walkOf(20'000, hasEnded))([&](std::span<const ScanEntry> batch) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        EXPECT_LE(batch.size(), scanBatchLimit);
        for (const ScanEntry& entry : batch) {
            ASSERT_EQ(entry, (ScanEntry{std::to_string(seen), seen, seen * 0.5}));
            ++seen;
        }
    });
    EXPECT_EQ(seen, 20'000);
    EXPECT_EQ(report.filesSeen, 20'000);
    EXPECT_TRUE(hasEnded);
}

TEST(WalkAhead, AFailureOnEitherSideEndsBoth) {
    bool hasEnded = false;
    int batches = 0;
    EXPECT_THROW(walkAhead(walkOf(1'000'000, hasEnded))([&](std::span<const ScanEntry>) {
                     if (++batches == 3) throw std::runtime_error("the disk is full");
                 }),
                 std::runtime_error);
    EXPECT_EQ(batches, 3);
    EXPECT_TRUE(hasEnded);

    const Walk failing = [&](const EntrySink& sink) -> ScanReport {
        walkOf(5'000, hasEnded)(sink);
        throw ScanError(ScanError::Reason::missing);
    };
    std::size_t seen = 0;
    EXPECT_THROW(walkAhead(failing)([&](std::span<const ScanEntry> batch) { seen += batch.size(); }),
                 ScanError);
    EXPECT_EQ(seen, 5'000U);
}

}  // namespace
}  // namespace brindle
