#include "store/SQLiteError.h"
#include "support/ChildProcess.h"
#include "support/FaultyVfs.h"
#include "support/Rounds.h"
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
    {"FirstCheck", [](TempHistory&) {}, [](TempHistory& history) { history.check("home", manyFiles(1)); }},
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

void prepare(TempHistory& history, const Work& work) {
    history.include("home");
    work.before(history);
    history.now += 1;
}

class WorkOn : public testing::TestWithParam<std::tuple<Work, FaultCase>> {};

// Fails the n-th call to the disk, for every n until none is left to fail.
TEST_P(WorkOn, AFailingDiskLeavesWhatWasThereAndTheNextTryWorks) {
    const auto& [work, fault] = GetParam();
    TempHistory reference;
    prepare(reference, work);
    const auto before = reference.everything();
    work.run(reference);
    const auto after = reference.everything();

    int failures = 0;
    int calls = 1;
    FaultyVfs disk;
    for (int n = 1;; calls = ++n) {
        SCOPED_TRACE("call " + std::to_string(n));
        TempHistory history;
        prepare(history, work);
        disk.arm({.failAt = n, .code = fault.code, .effect = fault.effect});
        bool hasThrown = false;
        try {
            work.run(history);
        } catch (const SQLiteError& error) {
            hasThrown = true;
            EXPECT_NE(error.message(), "");
        }
        const bool faultCame = disk.hasFailed();
        disk.disarm();
        ASSERT_EQ(history.everything(), hasThrown ? before : after);
        if (hasThrown) {
            ++failures;
            work.run(history);
            ASSERT_EQ(history.everything(), after);
        }
        if (!faultCame) break;
    }
    reportRounds(calls, failures);
    EXPECT_GT(failures, 3);
}

INSTANTIATE_TEST_SUITE_P(Fault, WorkOn, testing::Combine(testing::ValuesIn(works), testing::ValuesIn(faults)),
                         [](const auto& tested) {
                             return std::string(std::get<0>(tested.param).name) +
                                    std::get<1>(tested.param).name;
                         });

// Kills the process in place of the n-th call to the disk, for every n until the work is done before.
TEST(Fault, AKilledProcessLeavesAllOfItsWorkOrNothing) {
    int kills = 0;
    for (const Work& work : works) {
        SCOPED_TRACE(work.name);
        TempHistory reference;
        prepare(reference, work);
        const auto before = reference.everything();
        work.run(reference);
        reference.close();
        const auto after = reference.everything();
        bool wasKilled = true;
        for (int n = 1; wasKilled; ++n) {
            SCOPED_TRACE("call " + std::to_string(n));
            TempHistory history;
            prepare(history, work);
            history.close();
            const int status = inChildProcess([&] {
                FaultyVfs disk;
                disk.arm({.failAt = n, .effect = DiskFault::Effect::kill});
                work.run(history);
                history.close();
            });
            wasKilled = WIFSIGNALED(status);
            kills += wasKilled ? 1 : 0;
            ASSERT_TRUE(wasKilled || status == 0);
            ASSERT_EQ(history.rows("PRAGMA integrity_check"), std::vector<std::string>{"ok"});
            if (wasKilled && history.everything() == before) work.run(history);
            ASSERT_EQ(history.everything(), after);
        }
    }
    reportRounds(kills, kills);
}

}  // namespace
}  // namespace brindle
