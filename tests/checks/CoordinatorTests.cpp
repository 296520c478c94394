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

bool isStartOf(const CoordinatorEvent& event, const std::string& id) {
    const auto* started = std::get_if<LocationStarted>(&event);
    return started != nullptr && started->location.rawValue == id;
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
