#include "checks/Coordinator.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

constexpr const char* changedSentence = "The folder changed during the check. It will be checked again.";

bool isStartOf(const CoordinatorEvent& event, const std::string& id) {
    const auto* started = std::get_if<LocationStarted>(&event);
    return started != nullptr && started->location.rawValue == id;
}

TEST_F(Coordinator, ChecksEveryLocationOnceInOrderAndFinishesLast) {
    includeAll({"a", "b"});
    const auto summary = run({{"b"}, {"a"}, {"b"}});
    EXPECT_THAT(committedBy(summary), ElementsAre("b", "a"));
    EXPECT_FALSE(summary.cancelled);
    EXPECT_THAT(heard(), ElementsAre("started b", "started a", "finished"));
    const auto* progress = std::get_if<LocationProgress>(&events.at(1));
    ASSERT_NE(progress, nullptr);
    EXPECT_EQ(progress->name, "b");
    EXPECT_EQ(progress->progress.filesSeen, 1);
    EXPECT_EQ(std::get<RunFinished>(events.back()).summary, summary);

    events.clear();
    EXPECT_EQ(run({}), CheckRunSummary());
    EXPECT_THAT(heard(), ElementsAre("finished"));
}

TEST_F(Coordinator, ASecondRequestJoinsTheRunInProgress) {
    includeAll({"a", "b"});
    std::shared_future<CheckRunSummary> joined;
    onEvent = [&](const CoordinatorEvent& event) {
        if (isStartOf(event, "a")) joined = coordinator().run({.locations = {{"b"}}});
    };
    const auto summary = run({{"a"}});
    EXPECT_EQ(joined.get(), summary);
    EXPECT_THAT(committedBy(summary), ElementsAre("a"));
    EXPECT_FALSE(coordinator().running());

    // What the last event brings about is another run.
    bool isFirst = true;
    onEvent = [&](const CoordinatorEvent& event) {
        if (!std::holds_alternative<RunFinished>(event) || !isFirst) return;
        isFirst = false;
        joined = coordinator().run({.locations = {{"b"}}});
    };
    EXPECT_THAT(committedBy(run({{"a"}})), ElementsAre("a"));
    EXPECT_THAT(committedBy(joined.get()), ElementsAre("b"));
    EXPECT_THAT(heard(),
                ElementsAre("started a", "finished", "started a", "finished", "started b", "finished"));
}

TEST_F(Coordinator, CancelledInTheThirdOfFiveKeepsTwo) {
    const auto all = includeAll({"a", "b", "c", "d", "e"});
    atEnd = [&](const std::string& root) {
        if (root == path("c")) coordinator().cancel();
    };
    const auto summary = run(all);
    EXPECT_TRUE(summary.cancelled);
    EXPECT_THAT(committedBy(summary), ElementsAre("a", "b"));
    EXPECT_THAT(summary.unavailable, IsEmpty());
    EXPECT_THAT(summary.failures, IsEmpty());
    EXPECT_THAT(heard(), ElementsAre("started a", "started b", "started c", "finished"));
    EXPECT_EQ(value("SELECT COUNT(*) FROM scan_runs"), "2");
    atEnd = [](const std::string&) {};
    EXPECT_FALSE(run(all).cancelled);  // and the next run is a new one
}

TEST_F(Coordinator, ALocationDoesNotKeepTheOthersFromBeingChecked) {
    includeAll({"a", "gone", "replaced", "z"});
    onEvent = [&](const CoordinatorEvent& event) {
        if (isStartOf(event, "a")) fs::remove_all(path("gone"));
    };
    atEnd = [&](const std::string& root) {
        if (root != path("replaced")) return;
        fs::rename(root, root + " before");
        fs::create_directory(root);
    };
    const auto summary = run({{"a"}, {"gone"}, {"replaced"}, {"z"}});
    EXPECT_THAT(committedBy(summary), ElementsAre("a", "z"));
    EXPECT_THAT(summary.unavailable, ElementsAre(Pair(LocationID{"gone"}, LocationStatus::disconnected)));
    EXPECT_THAT(summary.failures, ElementsAre(Pair(LocationID{"replaced"}, changedSentence)));
    EXPECT_EQ(history.record("gone").status, LocationStatus::disconnected);
    EXPECT_EQ(history.record("replaced").status, LocationStatus::active);
    EXPECT_EQ(history.record("replaced").baselineAt, std::nullopt);
}

TEST_F(Coordinator, WhatIsNoLongerTrackedIsPassedOver) {
    includeAll({"a", "removed", "forgotten", "removed in its turn", "z"});
    run({{"removed"}, {"removed in its turn"}});
    events.clear();
    onEvent = [&](const CoordinatorEvent& event) {
        if (isStartOf(event, "a")) {
            history.store().remove({"removed"}, 77).get();
            history.store().forget({"forgotten"}).get();
        } else if (isStartOf(event, "removed in its turn")) {
            history.store().remove({"removed in its turn"}, 77).get();
            fs::remove_all(path("removed in its turn"));
        }
    };
    const auto summary = run({{"a"}, {"removed"}, {"forgotten"}, {"removed in its turn"}, {"z"}});
    EXPECT_THAT(committedBy(summary), ElementsAre("a", "z"));
    EXPECT_THAT(summary.unavailable, IsEmpty());
    EXPECT_THAT(summary.failures, IsEmpty());
    EXPECT_THAT(heard(), ElementsAre("started a", "started removed in its turn", "started z", "finished"));
    EXPECT_THAT(history.rows("SELECT id, status, removed_at FROM locations WHERE id NOT IN ('a', 'z') "
                             "ORDER BY id"),
                ElementsAre("removed|paused|77.0", "removed in its turn|paused|77.0"));
}

// No lock keeps out a program that asks for none.
TEST_F(Coordinator, WhatAnotherProgramTakesAwayWhileItIsWalkedIsNotRevived) {
    for (const char* how : {"UPDATE locations SET removed_at = 77, status = 'paused'; DELETE FROM inventory",
                            "DELETE FROM locations; DELETE FROM inventory"}) {
        SCOPED_TRACE(how);
        include("taken away");
        run({{"taken away"}});
        write("taken away/new", 5);
        std::vector<std::string> before;
        atEnd = [&](const std::string&) {
            execute(how);
            before = history.everything();
        };
        EXPECT_EQ(run({{"taken away"}}), CheckRunSummary());
        EXPECT_EQ(history.everything(), before);
        atEnd = [](const std::string&) {};
        execute("DELETE FROM locations");
    }
}

TEST_F(Coordinator, AFailureOfTheHistoryOrOfTheHandlerIsNoEnd) {
    includeAll({"a", "gone", "z"});
    fs::remove_all(path("gone"));
    execute(
        "CREATE TRIGGER failing BEFORE UPDATE ON locations WHEN NEW.status = 'disconnected' "
        "BEGIN SELECT RAISE(ABORT, 'no'); END");
    onEvent = [](const CoordinatorEvent&) { throw std::runtime_error("a window that fails"); };
    const auto summary = run({{"a"}, {"gone"}, {"z"}});
    EXPECT_THAT(committedBy(summary), ElementsAre("a", "z"));
    EXPECT_THAT(summary.unavailable, IsEmpty());
    EXPECT_THAT(summary.failures, ElementsAre(Pair(LocationID{"gone"}, HasSubstr("can't be used (no)."))));
    EXPECT_THAT(heard(), ElementsAre("started a", "started gone", "started z", "finished"));
}

TEST_F(Coordinator, AnotherProgramIsToldOfOrWaitedFor) {
    include("a");
    RunLockSource otherProgram(history.directory());
    std::optional held(otherProgram.take(RunLock::WhenTaken::refuse, CancellationFlag()));
    const auto refused = run({{"a"}});
    EXPECT_THAT(refused.refused.value_or(""), HasSubstr("is using this storage history."));
    EXPECT_THAT(heard(), ElementsAre("finished"));

    const RunRequest patient{.locations = {{"a"}}, .whenTaken = RunLock::WhenTaken::wait};
    auto waiting = coordinator().run(patient);
    coordinator().cancel();
    EXPECT_EQ(waiting.get(), CheckRunSummary{.cancelled = true});

    waiting = coordinator().run({.locations = {{"a"}}, .whenTaken = RunLock::WhenTaken::wait});
    held.reset();
    EXPECT_THAT(committedBy(waiting.get()), ElementsAre("a"));
}

TEST_F(Coordinator, EstimatesAreMadeWhereThereAreNoneWhileTheyAreWanted) {
    const auto all = includeAll({"a", "b"});
    EXPECT_THAT(run(all).estimated, IsEmpty());
    moveBaselinesToTheFuture();
    coordinator().enableEstimates();
    EXPECT_THAT(run({{"a"}}).estimated, ElementsAre(Pair(LocationID{"a"}, EstimateTotals{10, 1})));
    EXPECT_THAT(run(all).estimated, ElementsAre(Pair(LocationID{"b"}, EstimateTotals{10, 1})));
    coordinator().disableEstimates().get();
    EXPECT_EQ(value("SELECT COUNT(*) FROM estimates"), "0");
    EXPECT_THAT(run(all).estimated, IsEmpty());
}

TEST_F(Coordinator, DisablingWhileEstimatingEndsTheRunAndLeavesNoEstimates) {
    const auto all = includeAll({"a", "b", "c"});
    run(all);
    moveBaselinesToTheFuture();
    coordinator().enableEstimates();
    events.clear();
    std::future<void> disabled;
    onEvent = [&](const CoordinatorEvent& event) {
        const auto* estimating = std::get_if<LocationEstimating>(&event);
        if (estimating != nullptr && estimating->location.rawValue == "b")
            disabled = coordinator().disableEstimates();
    };
    const auto running = coordinator().run({.locations = all});
    running.wait();
    disabled.get();
    EXPECT_THAT(committedBy(running.get()), ElementsAre("a", "b", "c"));
    EXPECT_TRUE(running.get().cancelled);
    EXPECT_THAT(heard(), ElementsAre("started a", "started b", "started c", "estimating a", "estimating b",
                                     "finished"));
    EXPECT_EQ(value("SELECT (SELECT COUNT(*) FROM estimates), COUNT(estimated_at) FROM locations"), "0|0");
}

TEST_F(Coordinator, StatusesAreStoredWhereTheyChanged) {
    includeAll({"a", "gone", "removed"});
    history.store().remove({"removed"}, 77).get();
    execute(
        "CREATE TABLE writes (id); CREATE TRIGGER written AFTER UPDATE ON locations "
        "BEGIN INSERT INTO writes VALUES (NEW.id || ' ' || NEW.status); END");
    fs::rename(path("gone"), path("a/gone"));
    coordinator().refreshStatuses().get();
    coordinator().refreshStatuses().get();
    fs::rename(path("a/gone"), path("gone"));
    coordinator().refreshStatuses().get();
    EXPECT_THAT(history.rows("SELECT id FROM writes"), ElementsAre("gone disconnected", "gone active"));
}

TEST_F(Coordinator, EndingItEndsTheRun) {
    const auto all = includeAll({"a", "b"});
    const RunRequest request{.locations = all};
    atEnd = [&](const std::string&) {
        while (!request.cancellation->isSet()) std::this_thread::yield();
    };
    const auto running = coordinator().run(request);
    end();
    EXPECT_EQ(running.get(), CheckRunSummary{.cancelled = true});
    EXPECT_THAT(heard().back(), "finished");
}

}  // namespace
}  // namespace brindle
