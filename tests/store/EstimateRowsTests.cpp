#include "support/TempHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Rows = std::vector<EstimateRow>;

constexpr LocalDay monday{2026, 3, 2};
constexpr LocalDay tuesday{2026, 3, 3};

/// A walk that hands over these parts of groups, one at a time, and then the files.
EstimateWalk scriptedEstimates(Rows files, Rows groups = {}) {
    return [files = std::move(files), groups = std::move(groups)](const EstimateGroupSink& sink) {
        for (const EstimateRow& group : groups) sink(std::span(&group, 1));
        return files;
    };
}

EstimateRequest request(const TempHistory& history, const std::string& id, EstimateWalk walk) {
    return {.locationID = {id}, .walk = std::move(walk), .now = [&history] { return history.now; }};
}

EstimateTotals replace(TempHistory& history, const std::string& id, EstimateWalk walk) {
    return history.store().replaceEstimates(request(history, id, std::move(walk))).get();
}

std::vector<std::string> estimates(const TempHistory& history) {
    return history.rows(
        "SELECT location_id, local_day, folder, name, bytes, file_count, contributor, made_at "
        "FROM estimates ORDER BY location_id, local_day, folder, name");
}

TEST(Estimates, PartsOfAGroupBecomeOneRowAndSingleFilesStaySingle) {
    TempHistory history;
    history.include("home");
    history.now += 0.5;
    const EstimateTotals totals = replace(
        history, "home",
        scriptedEstimates({{monday, "a/b/c", "big", {900, 1}}, {monday, "a/b/c", "big too", {800, 1}}},
                          {{monday, "a/b/c", "one", {10, 1}},
                           {monday, "a/b/c", "", {7, 2}},
                           {tuesday, "a/b/c", "two", {20, 1}},
                           {monday, "", "root", {30, 1}},
                           {monday, "P.app/x", "packed", {40, 1}},
                           {monday, "a/b/c", "late", {1, 1}}}));
    EXPECT_EQ(totals, (EstimateTotals{1808, 9}));
    EXPECT_THAT(estimates(history), ElementsAre("home|2026-03-02||root|30|1||1772884800.5",
                                                "home|2026-03-02|P.app/x|packed|40|1|P.app|1772884800.5",
                                                "home|2026-03-02|a/b/c||18|4|a/b|1772884800.5",
                                                "home|2026-03-02|a/b/c|big|900|1|a/b|1772884800.5",
                                                "home|2026-03-02|a/b/c|big too|800|1|a/b|1772884800.5",
                                                "home|2026-03-03|a/b/c|two|20|1|a/b|1772884800.5"));
    EXPECT_EQ(history.record("home").estimatedAt, history.now);
}

TEST(Estimates, ReplacingThoseOfOneLocationLeavesTheOthersAndClearingTakesAll) {
    TempHistory history;
    for (const char* id : {"one", "two"}) {
        history.include(id);
        replace(history, id, scriptedEstimates({{monday, "", "x", {5, 1}}}, {{monday, "d", "", {9, 3}}}));
    }
    const UnixTime first = history.now;
    history.now += 60;
    EXPECT_EQ(replace(history, "one", scriptedEstimates({{tuesday, "", "y", {6, 1}}})),
              (EstimateTotals{6, 1}));
    EXPECT_THAT(history.rows("SELECT location_id, local_day, name, bytes FROM estimates ORDER BY 1, 4"),
                ElementsAre("one|2026-03-03|y|6", "two|2026-03-02|x|5", "two|2026-03-02||9"));
    EXPECT_EQ(history.record("one").estimatedAt, history.now);
    EXPECT_EQ(history.record("two").estimatedAt, first);

    // None at all is an answer, too: they need not be made again.
    EXPECT_EQ(replace(history, "two", scriptedEstimates({})), EstimateTotals{});
    EXPECT_EQ(history.record("two").estimatedAt, history.now);

    history.check("one", {{"a", 1}});
    history.store().clearEstimates().get();
    EXPECT_THAT(estimates(history), IsEmpty());
    EXPECT_EQ(history.record("one").estimatedAt, std::nullopt);
    EXPECT_EQ(history.record("two").estimatedAt, std::nullopt);
    EXPECT_EQ(history.record("one").trackedBytes, 1);
}

TEST(Estimates, AStopAfterTheWalksLastLookAtTheFlagLeavesTheOldOnes) {
    TempHistory history;
    history.include("home");
    replace(history, "home", scriptedEstimates({{monday, "", "x", {5, 1}}}));
    const auto before = history.everything();
    history.now += 60;

    const Rows groups{{monday, "d", "", {9, 3}}};
    auto flag = std::make_shared<CancellationFlag>();
    EstimateRequest stopped = request(history, "home", [&](const EstimateGroupSink& sink) {
        sink(groups);
        flag->set();
        return Rows{};
    });
    stopped.cancellation = flag;
    EXPECT_THROW(history.store().replaceEstimates(stopped).get(), Cancelled);
    EXPECT_EQ(history.everything(), before);

    // Nothing of what was handed over is left for the next ones.
    EXPECT_EQ(replace(history, "home", scriptedEstimates({}, groups)), (EstimateTotals{9, 3}));
    EXPECT_THAT(history.rows("SELECT bytes, file_count FROM estimates"), ElementsAre("9|3"));
}

}  // namespace
}  // namespace brindle
