#include "model/Calendar.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

const Calendar berlin("de_DE", "Europe/Berlin");
constexpr UnixTime hour = 3600;

TEST(LocalDay, HasATextThatSortsLikeTheDayAndReadsBack) {
    EXPECT_EQ((LocalDay{2026, 3, 7}).text(), "2026-03-07");
    EXPECT_EQ((LocalDay{987, 12, 31}).text(), "0987-12-31");
    EXPECT_EQ(LocalDay::parse("2026-03-07"), (LocalDay{2026, 3, 7}));
    EXPECT_EQ(LocalDay::parse("0987-12-31"), (LocalDay{987, 12, 31}));
    for (const auto* text : {"", "2026", "2026-3-07", "2026-03-7", "2026-03-07 ", " 2026-03-07", "2026-00-07",
                             "2026-13-07", "2026-03-00", "2026-03-32", "+026-03-07", "2026-+3-07",
                             "-2026-03-07", "2026/03/07", "2026-03-07-", "99999999999-01-01"})
        EXPECT_FALSE(LocalDay::parse(text)) << text;
}

// Around both changes of the clocks, and in zones that skipped a midnight or a whole day.
struct StepCase {
    const char* zone;
    LocalDay from;
    int days;
    LocalDay to;
};

class DayStep : public testing::TestWithParam<StepCase> {};

TEST_P(DayStep, LandsOnTheCalendarDayAndBack) {
    const auto& [zone, from, days, to] = GetParam();
    const Calendar calendar("en_US", zone);
    EXPECT_EQ(calendar.addingDays(from, days).text(), to.text());
    EXPECT_EQ(calendar.addingDays(to, -days).text(), from.text());
    EXPECT_EQ(calendar.daysBetween(from, to), days);
    EXPECT_EQ(calendar.daysBetween(to, from), -days);
}

INSTANTIATE_TEST_SUITE_P(Calendar, DayStep,
                         testing::Values(StepCase{"Europe/Berlin", {2026, 3, 28}, 1, {2026, 3, 29}},
                                         StepCase{"Europe/Berlin", {2026, 3, 29}, 1, {2026, 3, 30}},
                                         StepCase{"Europe/Berlin", {2026, 10, 24}, 2, {2026, 10, 26}},
                                         StepCase{"America/Sao_Paulo", {2018, 11, 3}, 1, {2018, 11, 4}},
                                         StepCase{"Pacific/Auckland", {2025, 12, 31}, 1, {2026, 1, 1}},
                                         StepCase{"UTC", {2024, 2, 28}, 2, {2024, 3, 1}},
                                         StepCase{"UTC", {2026, 1, 1}, -1, {2025, 12, 31}},
                                         StepCase{"UTC", {2025, 1, 1}, 365, {2026, 1, 1}}));

TEST(Calendar, EveryInstantOfADayBelongsToIt) {
    for (const LocalDay day : {LocalDay{2026, 3, 29}, LocalDay{2026, 10, 25}, LocalDay{2026, 6, 1}}) {
        const UnixTime begin = berlin.time(day);
        const UnixTime end = berlin.time(berlin.addingDays(day, 1));
        EXPECT_EQ(berlin.day(begin), day);
        EXPECT_EQ(berlin.day(end - 0.001), day);
        EXPECT_EQ(berlin.day(begin - 0.001), berlin.addingDays(day, -1));
    }
    // The day on which the clocks go forward has 23 hours, the one on which they go back 25.
    EXPECT_EQ(berlin.time({2026, 3, 30}) - berlin.time({2026, 3, 29}), 23 * hour);
    EXPECT_EQ(berlin.time({2026, 10, 26}) - berlin.time({2026, 10, 25}), 25 * hour);
    EXPECT_EQ(berlin.day(-1), (LocalDay{1970, 1, 1}));  // already 00:59:59 in Berlin
    EXPECT_EQ(Calendar("en_US", "America/New_York").day(-1), (LocalDay{1969, 12, 31}));
}

TEST(Calendar, ADayWithoutMidnightBeginsAfterTheGap) {
    const Calendar saoPaulo("pt_BR", "America/Sao_Paulo");
    const LocalDay day{2018, 11, 4};  // the clocks went from 23:59:59 to 01:00:00
    EXPECT_EQ(saoPaulo.day(saoPaulo.time(day)), day);
    EXPECT_EQ(saoPaulo.day(saoPaulo.time(day) - 1), (LocalDay{2018, 11, 3}));
}

TEST(Calendar, ADayWithTwoMidnightsBeginsAtTheFirst) {
    const Calendar havana("es_CU", "America/Havana");
    const LocalDay day{2026, 11, 1};  // the clocks go from 00:59:59 back to 00:00:00
    EXPECT_EQ(havana.time({2026, 11, 2}) - havana.time(day), 25 * 3600.0);
    EXPECT_EQ(havana.day(havana.time(day) - 1), (LocalDay{2026, 10, 31}));
}

TEST(Calendar, AddingMonthsGivesTheFirstOfAMonth) {
    EXPECT_EQ(berlin.addingMonths({2026, 1, 31}, 1), (LocalDay{2026, 2, 1}));
    EXPECT_EQ(berlin.addingMonths({2026, 1, 31}, 0), (LocalDay{2026, 1, 1}));
    EXPECT_EQ(berlin.addingMonths({2026, 1, 15}, -1), (LocalDay{2025, 12, 1}));
    EXPECT_EQ(berlin.addingMonths({2026, 11, 2}, 14), (LocalDay{2028, 1, 1}));
}

TEST(Calendar, ListsDaysInclusively) {
    const auto march = berlin.days({2026, 3, 27}, {2026, 4, 2});
    ASSERT_EQ(march.size(), 7U);
    EXPECT_EQ(march.front(), (LocalDay{2026, 3, 27}));
    EXPECT_EQ(march.back(), (LocalDay{2026, 4, 2}));
    EXPECT_EQ(berlin.days({2026, 3, 7}, {2026, 3, 7}).size(), 1U);
    EXPECT_TRUE(berlin.days({2026, 3, 7}, {2026, 3, 6}).empty());
}

TEST(Calendar, LabelsFollowTheLocaleAndDaysTheCalendar) {
    const Calendar english("en_US", "UTC");
    EXPECT_EQ(english.longLabel({2026, 3, 7}), "Saturday, March 7, 2026");
    EXPECT_EQ(english.mediumLabel({2026, 3, 7}), "Saturday, March 7");
    EXPECT_EQ(english.monthLabel({2026, 3, 7}), "March 2026");
    EXPECT_EQ(berlin.longLabel({2026, 3, 7}), "Samstag, 7. März 2026");

    const Calendar buddhist("th_TH@calendar=buddhist", "Asia/Bangkok");
    EXPECT_EQ(buddhist.day(english.time({2026, 3, 7}, 12)), (LocalDay{2569, 3, 7}));
    EXPECT_THROW(Calendar("en_US", "Europe/Nowhere"), std::invalid_argument);
}

}  // namespace
}  // namespace brindle
