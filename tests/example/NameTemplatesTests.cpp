#include "example/NameTemplates.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr std::uint64_t step = 0x9e3779b97f4a7c15;  // of the state, at every draw

TEST(RandomSource, DrawsTheReferenceNumbers) {
    RandomSource random;
    for (const std::uint64_t expected : {0xe220a8397b1dcdafU, 0x6e789e6aa1b965f4U, 0x06c45d188009454fU})
        EXPECT_EQ(random.next(), expected);
}

// From this state on the draws are 0, the only one whose product a bound of 60 or 16 could reject, and then
// those of the reference.
TEST(RandomSource, ADrawThatWouldFavourSomeNumbersIsDrawnAgain) {
    const struct {
        std::uint64_t bound;
        std::uint64_t expected;
        std::uint64_t draws;
    } cases[] = {{60, 52, 2}, {40, 35, 2}, {9999, 8832, 2}, {16, 0, 1}, {1, 0, 1}};
    for (const auto& [bound, expected, draws] : cases) {
        RandomSource random{0 - step};
        EXPECT_EQ(random.below(bound), expected) << bound;
        EXPECT_EQ(random.state, step * (draws - 1)) << bound;
    }
}

// Every name begins with the second, 52, and draws its numbers behind it.
TEST(NameTemplates, EveryPlaceholderHasItsOwnValue) {
    const struct {
        const char* name;
        const char* expected;
        std::uint64_t draws;
    } cases[] = {
        {"notes.txt", "notes.txt", 1},
        {"Screen Recording {date} at {time}.mov", "Screen Recording 2026-03-07 at 14.05.52.mov", 1},
        {"{time} {date}, {date} {time}", "14.05.52 2026-03-07, 2026-03-07 14.05.52", 1},
        {"A001_C{n3}_{mmdd}XY.braw", "A001_C104_0307XY.braw", 2},
        {"Waveform_{n4}.dat", "Waveform_4315.dat", 2},
        {"story-{n}-carousel-panel-{n}@2x.png", "story-18-carousel-panel-02@2x.png", 3},
        {"{n} {n3} {n4}", "39 007 4315", 4},  // those of four digits are drawn first
        {"{hex}-attachment-{n}.pdf", "0f152c3f-attachment-18.pdf", 10},
        {"{n4", "{n4", 1},
    };
    const Calendar kathmandu("ne_NP", "Asia/Kathmandu");
    const LocalDay day{2026, 3, 7};
    const UnixTime at = kathmandu.time(day, 14) + 5 * 60 + 59;
    for (const auto& [name, expected, draws] : cases) {
        RandomSource random;
        EXPECT_EQ(expandedName(name, day, at, kathmandu, random), expected);
        EXPECT_EQ(random.state, step * draws) << name;
    }
}

}  // namespace
}  // namespace brindle
