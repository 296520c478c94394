#include "model/Change.h"
#include "model/CheckedSum.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(ChangeTotals, SignsGoToTheirSideAndFilesAreCounted) {
    ChangeTotals totals;
    totals.add(FileChange{.byteDelta = 100, .fileCount = 1});
    totals.add(FileChange{.byteDelta = -30, .fileCount = 1});
    totals.add(FileChange{.byteDelta = 0, .fileCount = 5});  // changes no sum, and its files took part
    EXPECT_EQ(totals, (ChangeTotals{100, 30, 7}));
    EXPECT_EQ(totals.net(), 70);
    EXPECT_EQ(totals.volume(), 130);
    totals += ChangeTotals{1, 2, 3};
    EXPECT_EQ(totals, (ChangeTotals{101, 32, 10}));
}

TEST(ChangeTotalsDeathTest, AnOverflowStopsTheProcess) {
    constexpr auto largest = INT64_MAX;
    EXPECT_DEATH((ChangeTotals{largest, 0, 0}).add(1, 1), "no longer fits");
    EXPECT_DEATH((ChangeTotals{0, largest, 0}).add(-1, 1), "no longer fits");
    EXPECT_DEATH((ChangeTotals{0, 0, largest}).add(0, 1), "no longer fits");
    EXPECT_DEATH((ChangeTotals{0, 1, 0}).add(INT64_MIN, 1), "no longer fits");
    EXPECT_DEATH(static_cast<void>((ChangeTotals{largest, 1, 0}).volume()), "no longer fits");
    EXPECT_DEATH(static_cast<void>(checkedDifference(INT64_MIN, 1)), "no longer fits");
}

TEST(FileChange, AGroupIsShownByItsCount) {
    EXPECT_EQ(displayName({.name = "a.txt", .fileCount = 1}), "a.txt");
    EXPECT_EQ(displayName({.name = "", .fileCount = 1}), "1 smaller file");
    EXPECT_EQ(displayName({.name = "a.txt", .fileCount = 2}), "2 smaller files");
    EXPECT_EQ(displayName({.name = "", .fileCount = 1240}), "1,240 smaller files");
}

TEST(FolderRef, OrderIsLocationThenComponentsWithAPrefixFirst) {
    const std::vector<FolderRef> ordered = {{{"a"}, {}},         {{"a"}, {"x"}},  {{"a"}, {"x", "a"}},
                                            {{"a"}, {"x", "b"}}, {{"a"}, {"xa"}}, {{"b"}, {}}};
    EXPECT_TRUE(std::ranges::is_sorted(ordered));
    EXPECT_EQ(std::ranges::adjacent_find(ordered), ordered.end());
}

TEST(DirectionFilter, ZeroPassesOnlyAll) {
    using enum DirectionFilter;
    EXPECT_TRUE(passes(all, 0) && passes(added, 1) && passes(freed, -1));
    EXPECT_FALSE(passes(added, 0) || passes(added, -1) || passes(freed, 0) || passes(freed, 1));
}

}  // namespace
}  // namespace brindle
