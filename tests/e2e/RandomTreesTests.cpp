#include "e2e/Records.h"
#include "support/RandomTree.h"
#include "support/Rounds.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr std::size_t largestTold = 10;

nlohmann::json totalsOf(const std::vector<Difference>& news) {
    std::int64_t added = 0;
    std::int64_t freed = 0;
    for (const Difference& difference : news)
        (difference.delta > 0 ? added : freed) += std::abs(difference.delta);
    return {{"added", added}, {"freed", freed}, {"count", news.size()}};
}

std::vector<std::int64_t> largestOf(const std::vector<Difference>& news) {
    std::vector<std::int64_t> magnitudes;
    for (const Difference& difference : news) magnitudes.push_back(std::abs(difference.delta));
    std::ranges::sort(magnitudes, std::greater());
    magnitudes.resize(std::min(magnitudes.size(), largestTold));
    return magnitudes;
}

void expectTold(const nlohmann::json& report, const Listing& files, const std::vector<Difference>& news,
                const std::string& outcome) {
    ASSERT_EQ(report["locations"].size(), 1U) << report;
    const nlohmann::json& told = report["locations"][0];
    EXPECT_EQ(told["outcome"], outcome);
    EXPECT_EQ(told["totals"], totalsOf(news));
    EXPECT_EQ(told["trackedBytes"], totalOf(files));
    EXPECT_EQ(told["filesSeen"], files.size());
    EXPECT_EQ(told["unreadableFolders"], nlohmann::json::array());
    std::vector<std::int64_t> largest;
    for (const nlohmann::json& change : told["largestChanges"])
        largest.push_back(std::abs(change["byteDelta"].get<std::int64_t>()));
    EXPECT_EQ(largest, largestOf(news));
}

void checkATreeThatChanges(std::uint64_t seed) {
    const TempFolder folder;
    const Brindle brindle;
    RandomTree tree(folder.path() / "tree\n\xff\x1b[1m", seed);
    tree.change(120);

    Listing files = listingOf(tree.root());
    expectTold(brindle.json({"check", tree.root()}), files, {}, "baseline");
    expectLastCheck(Records(brindle), files, {});
    for (int check = 0; check < 8 && !testing::Test::HasFailure(); ++check) {
        SCOPED_TRACE("check " + std::to_string(check));
        tree.change(15);
        const Listing before = std::exchange(files, listingOf(tree.root()));
        const auto news = differencesBetween(before, files);
        expectTold(brindle.json({"check"}), files, news, "check");
        expectLastCheck(Records(brindle), files, news);
    }
}

TEST(RandomTrees, EveryCheckRecordsExactlyWhatFindSees) {
    const std::uint64_t first = testSeed();
    for (int round = 0; round < testRounds(8) && !HasFailure(); ++round) {
        const std::uint64_t seed = first + static_cast<std::uint64_t>(round);
        SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
        checkATreeThatChanges(seed);
    }
}

}  // namespace
}  // namespace brindle
