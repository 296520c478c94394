#include "support/FaultyVfs.h"
#include "support/TempHistory.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace brindle {
namespace {

Files manyFiles(int seed) {
    Files files;
    for (int i = 0; i < 400; ++i)
        if (i % 7 != seed) files[fmt::format("folder{}/file{:03}", i % 9, i)] = i * (i % 5 == seed ? 2 : 1);
    return files;
}

struct FaultCase {
    const char* name;
    int code;
    DiskFault::Effect effect;
};

class CheckOn : public testing::TestWithParam<FaultCase> {};

// Fails the n-th call to the disk of a check, for every n until none is left to fail.
TEST_P(CheckOn, AFailingDiskLeavesTheLastCheckWholeAndTheNextOneWorks) {
    TempHistory reference;
    reference.include("home");
    reference.check("home", manyFiles(1), {.unreadable = {{"folder3", true}}});
    const auto before = reference.everything();
    reference.now += 1;
    reference.check("home", manyFiles(2));
    const auto after = reference.everything();

    int failures = 0;
    FaultyVfs disk;
    for (int n = 1;; ++n) {
        TempHistory history;
        history.include("home");
        history.check("home", manyFiles(1), {.unreadable = {{"folder3", true}}});
        history.now += 1;
        CheckRequest request = history.request("home", scriptedWalk(manyFiles(2)));
        disk.arm({.failAt = n, .code = GetParam().code, .effect = GetParam().effect});
        bool hasThrown = false;
        try {
            history.store().commit(request).get();
        } catch (const SQLiteError& error) {
            hasThrown = true;
            EXPECT_NE(error.message(), "");
        }
        const bool faultCame = disk.hasFailed();
        disk.disarm();
        ASSERT_EQ(history.everything(), hasThrown ? before : after) << "call " << n;
        if (hasThrown) {
            ++failures;
            history.check("home", manyFiles(2));
            ASSERT_EQ(history.everything(), after) << "call " << n;
        }
        if (!faultCame) break;
    }
    EXPECT_GT(failures, 5);
}

INSTANTIATE_TEST_SUITE_P(Fault, CheckOn,
                         testing::Values(FaultCase{"OneFullWrite", SQLITE_FULL, DiskFault::Effect::failOnce},
                                         FaultCase{"AFullDisk", SQLITE_FULL, DiskFault::Effect::failOnward},
                                         FaultCase{"OneFailedCall", SQLITE_IOERR,
                                                   DiskFault::Effect::failOnce},
                                         FaultCase{"ADeadDisk", SQLITE_IOERR, DiskFault::Effect::failOnward}),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace brindle
