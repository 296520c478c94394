#include "store/SQLiteError.h"
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

void estimate(TempHistory& history, int count) {
    const auto walk = [count](const EstimateGroupSink& sink) {
        std::vector<EstimateRow> files;
        for (int i = 0; i < count; ++i) {
            const EstimateRow group{{2026, 3, 3}, fmt::format("folder{}", i), "", {i + 1, 2}};
            sink(std::span(&group, 1));
            files.push_back({{2026, 3, 2}, fmt::format("folder{}", i), "file", {i + 1, 1}});
        }
        return files;
    };
    static_cast<void>(
        history.store()
            .replaceEstimates({.locationID = {"home"}, .walk = walk, .now = [&] { return history.now; }})
            .get());
}

/// What is written over what was there before.
struct Work {
    const char* name;
    void (*before)(TempHistory&);
    void (*run)(TempHistory&);
};

const Work works[] = {
    {"Check",
     [](TempHistory& history) {
         history.check("home", manyFiles(1), {.unreadable = {{"folder3", true}}});
     },
     [](TempHistory& history) { history.check("home", manyFiles(2)); }},
    {"Estimates", [](TempHistory& history) { estimate(history, 1); },
     [](TempHistory& history) { estimate(history, 300); }},
};

struct FaultCase {
    const char* name;
    int code;
    DiskFault::Effect effect;
};

const FaultCase faults[] = {
    {"OneFullWrite", SQLITE_FULL, DiskFault::Effect::failOnce},
    {"AFullDisk", SQLITE_FULL, DiskFault::Effect::failOnward},
    {"OneFailedCall", SQLITE_IOERR, DiskFault::Effect::failOnce},
    {"ADeadDisk", SQLITE_IOERR, DiskFault::Effect::failOnward},
};

class WorkOn : public testing::TestWithParam<std::tuple<Work, FaultCase>> {
protected:
    static void prepare(TempHistory& history) {
        history.include("home");
        std::get<Work>(GetParam()).before(history);
        history.now += 1;
    }
    static void run(TempHistory& history) { std::get<Work>(GetParam()).run(history); }
};

// Fails the n-th call to the disk, for every n until none is left to fail.
TEST_P(WorkOn, AFailingDiskLeavesWhatWasThereAndTheNextTryWorks) {
    TempHistory reference;
    prepare(reference);
    const auto before = reference.everything();
    run(reference);
    const auto after = reference.everything();
    const FaultCase& fault = std::get<FaultCase>(GetParam());

    int failures = 0;
    FaultyVfs disk;
    for (int n = 1;; ++n) {
        SCOPED_TRACE("call " + std::to_string(n));
        TempHistory history;
        prepare(history);
        disk.arm({.failAt = n, .code = fault.code, .effect = fault.effect});
        bool hasThrown = false;
        try {
            run(history);
        } catch (const SQLiteError& error) {
            hasThrown = true;
            EXPECT_NE(error.message(), "");
        }
        const bool faultCame = disk.hasFailed();
        disk.disarm();
        ASSERT_EQ(history.everything(), hasThrown ? before : after);
        if (hasThrown) {
            ++failures;
            run(history);
            ASSERT_EQ(history.everything(), after);
        }
        if (!faultCame) break;
    }
    EXPECT_GT(failures, 3);
}

INSTANTIATE_TEST_SUITE_P(Fault, WorkOn, testing::Combine(testing::ValuesIn(works), testing::ValuesIn(faults)),
                         [](const auto& tested) {
                             return std::string(std::get<0>(tested.param).name) +
                                    std::get<1>(tested.param).name;
                         });

}  // namespace
}  // namespace brindle
