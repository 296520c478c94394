#include "analysis/ChartScale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace brindle {
namespace {

using testing::ElementsAre;

constexpr std::int64_t mostOfAll = std::numeric_limits<std::int64_t>::max();

std::vector<std::string> texts(const ChartScale& scale) {
    std::vector<std::string> texts;
    for (const ChartScale::Line& line : scale.lines) texts.push_back(line.text);
    return texts;
}

TEST(ChartScale, LinesStandAtRoundAmountsInOneUnit) {
    EXPECT_THAT(texts(changeScale(38'200'000'000, 6'100'000'000)),
                ElementsAre("\u221220 GB", "0", "+20 GB", "+40 GB"));
    EXPECT_THAT(texts(changeScale(1'100'000'000, 400'000'000)),
                ElementsAre("\u22120.5 GB", "0", "+0.5 GB", "+1.0 GB", "+1.5 GB"));
    EXPECT_THAT(texts(changeScale(0, 3000)), ElementsAre("\u22123 kB", "\u22122 kB", "\u22121 kB", "0"));
    EXPECT_THAT(texts(changeScale(3, 0)), ElementsAre("0", "+1 byte", "+2 bytes", "+3 bytes"));
    EXPECT_THAT(texts(sizeScale(1'190'000'000'000, 1'420'000'000'000)),
                ElementsAre("1.0 TB", "1.2 TB", "1.4 TB", "1.6 TB"));
}

TEST(ChartScale, NothingToMeasureAndTooMuchStillGiveAScale) {
    EXPECT_THAT(texts(changeScale(0, 0)), ElementsAre("", "0", ""));
    EXPECT_EQ(changeScale(0, 0).place(0), 0.5);
    EXPECT_THAT(texts(sizeScale(0, 0)), ElementsAre("0", "1 byte"));
    const ChartScale far = changeScale(mostOfAll, mostOfAll);
    EXPECT_EQ(far.place(mostOfAll), 1);
    EXPECT_EQ(far.place(-mostOfAll), 0);
    EXPECT_EQ(far.place(0), 0.5);
    EXPECT_EQ(sizeScale(mostOfAll, mostOfAll).lines.size(), 3U);
}

TEST(ChartScale, WhatHardlyChangesLooksLikeIt) {
    const ChartScale scale = sizeScale(500'000'000'000, 500'001'000'000);
    EXPECT_NEAR(scale.place(500'001'000'000), scale.place(500'000'000'000), 0.001);
    EXPECT_NEAR(scale.place(500'000'000'000), 0.5, 0.2);
    EXPECT_THAT(texts(scale), ElementsAre("450 GB", "500 GB", "550 GB"));
    for (const std::int64_t size : {999L, 123'456L, 5'000'000'000L}) {
        const ChartScale one = sizeScale(size, size);
        EXPECT_GT(one.place(size), 0) << size;
        EXPECT_LT(one.place(size), 1) << size;
    }
}

}  // namespace
}  // namespace brindle
