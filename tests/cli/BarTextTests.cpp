#include "cli/BarText.h"
#include "model/DisplayWidth.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr auto blocks = BarText::Characters::blocks;
constexpr auto ascii = BarText::Characters::ascii;

TEST(BarText, BothSidesHaveOneScale) {
    const BarText bars(3000, 1000, 8, blocks);
    EXPECT_EQ(bars.added(3000), "██████");
    EXPECT_EQ(bars.freed(1000), "██");
    EXPECT_EQ(bars.added(1000), "██");
    EXPECT_EQ(bars.added(1300), "██▋");
    EXPECT_EQ(bars.freed(750), "▐█");
    EXPECT_EQ(bars.freed(0), "  ");
    EXPECT_EQ(bars.added(0), "");
    // Nothing that changed looks as if it had not.
    EXPECT_EQ(bars.added(1), "▏");
    EXPECT_EQ(bars.freed(1), " ▕");

    // Beyond the scale, which few days may be.
    EXPECT_EQ(bars.added(3001), "█████▶");
    EXPECT_EQ(bars.freed(INT64_MAX), "◀█");

    const BarText plain(3000, 1000, 8, ascii);
    EXPECT_EQ(plain.added(1300), "###");
    EXPECT_EQ(plain.added(1), "#");
    EXPECT_EQ(plain.freed(500), " #");
    EXPECT_EQ(plain.added(3001), "#####>");
}

TEST(BarText, FitsItsColumnsWhateverTheAmounts) {
    constexpr std::int64_t amounts[] = {0, 1, 7, 1000, 999'999'999, INT64_MAX / 2, INT64_MAX};
    for (const auto characters : {blocks, ascii})
        for (const std::int64_t mostAdded : amounts)
            for (const std::int64_t mostFreed : amounts)
                for (const std::size_t columns : {0U, 1U, 2U, 3U, 40U}) {
                    const BarText bars(mostAdded, mostFreed, columns, characters);
                    const auto freed = displayWidth(bars.freed(mostFreed));
                    EXPECT_EQ(displayWidth(bars.freed(0)), freed);
                    EXPECT_LE(freed + displayWidth(bars.added(mostAdded)), columns);
                    EXPECT_LE(displayWidth(bars.added(mostAdded)), bars.columnsOfAdded());
                    EXPECT_LE(displayWidth(bars.added(INT64_MAX)), bars.columnsOfAdded());
                    EXPECT_EQ(displayWidth(bars.freed(INT64_MAX)), freed);
                    EXPECT_EQ(bars.added(1).empty(), bars.columnsOfAdded() == 0);
                }
}

}  // namespace
}  // namespace brindle
