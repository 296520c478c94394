#include "model/Calendar.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace brindle {
namespace {

const Calendar berlin("de_DE", "Europe/Berlin");

TEST(LocalDay, HasATextThatSortsLikeTheDayAndReadsBack) {
    EXPECT_EQ((LocalDay{987, 12, 31}).text(), "0987-12-31");
    EXPECT_EQ(LocalDay::parse("0987-12-31"), (LocalDay{987, 12, 31}));
    for (const auto* text : {"", "2026-3-07", "2026-03-7", "2026-03-07 ", " 2026-03-07", "2026-00-07",
                             "2026-13-07", "2026-03-00", "2026-03-32", "+026-03-07", "2026-+3-07",
                             "-2026-03-07", "2026/03/07", "99999999999-01-01"})
        EXPECT_FALSE(LocalDay::parse(text)) << text;
}

// Around both changes of the clocks, and in zones that skipped a midnight or a whole day, or had it twice.
TEST(Calendar, StepsFromDayToDayAndKnowsWhenTheyBeginAndEnd) {
    const struct {
        const char* zone;
        LocalDay from;
        int days;
        LocalDay to;
        double hours;  // from the beginning of the one to that of the other
    } cases[] = {
        {"Europe/Berlin", {2026, 3, 29}, 1, {2026, 3, 30}, 23},
        {"Europe/Berlin", {2026, 10, 24}, 2, {2026, 10, 26}, 49},
        {"America/Sao_Paulo", {2018, 11, 4}, 1, {2018, 11, 5}, 23},  // begins at 01:00
        {"America/Havana", {2026, 11, 1}, 1, {2026, 11, 2}, 25},     // has two midnights
        {"Pacific/Apia", {2011, 12, 29}, 1, {2011, 12, 31}, 24},     // the 30th was left out
        {"UTC", {2024, 2, 28}, 2, {2024, 3, 1}, 48},
        {"UTC", {2025, 1, 1}, 365, {2026, 1, 1}, 8760},
    };
    for (const auto& [zone, from, days, to, hours] : cases) {
        SCOPED_TRACE(zone + from.text());
        const Calendar calendar("en_US", zone);
        EXPECT_EQ(calendar.addingDays(from, days), to);
        EXPECT_EQ(calendar.addingDays(to, -days), from);
        EXPECT_EQ(calendar.daysBetween(from, to), days);
        EXPECT_EQ(calendar.daysBetween(to, from), -days);
        const UnixTime begin = calendar.time(from);
        EXPECT_EQ(calendar.time(to) - begin, hours * 3600);
        EXPECT_EQ(calendar.day(begin), from);
        EXPECT_LT(calendar.day(begin - 0.001), from);
        EXPECT_LT(calendar.day(calendar.time(to) - 0.001), to);
    }
    EXPECT_EQ(berlin.day(-1), (LocalDay{1970, 1, 1}));  // already 00:59:59 in Berlin
    EXPECT_EQ(Calendar("en_US", "America/New_York").day(-1), (LocalDay{1969, 12, 31}));
}

TEST(Calendar, AddingMonthsGivesTheFirstOfAMonthAndDaysAreListedInclusively) {
    EXPECT_EQ(berlin.addingMonths({2026, 1, 31}, 1), (LocalDay{2026, 2, 1}));
    EXPECT_EQ(berlin.addingMonths({2026, 1, 15}, -1), (LocalDay{2025, 12, 1}));
    EXPECT_EQ(berlin.addingMonths({2026, 11, 2}, 14), (LocalDay{2028, 1, 1}));
    EXPECT_EQ(berlin.days({2026, 3, 31}, {2026, 4, 1}), (std::vector<LocalDay>{{2026, 3, 31}, {2026, 4, 1}}));
    EXPECT_TRUE(berlin.days({2026, 3, 7}, {2026, 3, 6}).empty());
}

TEST(Calendar, LabelsFollowTheLocaleAndDaysTheCalendar) {
    EXPECT_EQ(Calendar("en_US", "UTC").longLabel({2026, 3, 7}), "Saturday, March 7, 2026");
    EXPECT_EQ(berlin.longLabel({2026, 3, 7}), "Samstag, 7. März 2026");
    const Calendar buddhist("th_TH@calendar=buddhist", "Europe/Berlin");
    EXPECT_EQ(buddhist.day(berlin.time({2026, 3, 7}, 12)), (LocalDay{2569, 3, 7}));
    EXPECT_THROW(Calendar("en_US", "Europe/Nowhere"), std::invalid_argument);
}

TEST(Calendar, AnInstantHasAFormForOtherProgramsWithTheOffsetOfItsMoment) {
    const struct {
        const char* zone;
        UnixTime at;
        const char* text;
    } cases[] = {
        {"UTC", 0, "1970-01-01T00:00:00+0000"},
        {"Europe/Berlin", 1'774'745'999.999, "2026-03-29T01:59:59+0100"},
        {"Europe/Berlin", 1'774'746'000, "2026-03-29T03:00:00+0200"},
        {"America/St_Johns", 1'772'884'800, "2026-03-07T08:30:00-0330"},
        {"Asia/Kathmandu", 1'772'884'800, "2026-03-07T17:45:00+0545"},
        {"America/New_York", -0.5, "1969-12-31T18:59:59-0500"},
        {"UTC", -1e300, "0000-12-30T00:00:00+0000"},
        {"UTC", 1e300, "9999-12-31T00:00:00+0000"},
        {"UTC", std::nan(""), "1970-01-01T00:00:00+0000"},
    };
    for (const auto& [zone, at, text] : cases)
        EXPECT_EQ(Calendar("th_TH@calendar=buddhist", zone).isoTime(at), text);
}

}  // namespace
}  // namespace brindle
