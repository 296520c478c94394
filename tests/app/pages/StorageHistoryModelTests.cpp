#include "app/pages/ShownHistory.h"
#include "app/pages/StorageHistoryModel.h"
#include "store/StoredHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace brindle {
namespace {

constexpr UnixTime aDay = 86'400;

/// A location "a" from Wednesday, March 4, 2026, on; nothing was checked on Thursday. Today is Saturday.
class StorageHistoryModelTest : public testing::Test {
protected:
    StorageHistoryModelTest() {
        const UnixTime today = history_.now;
        history_.now = today - 3 * aDay;
        history_.include("a");
        history_.check("a", {{"Movies/x", 1000}});
        history_.now = today - aDay;
        history_.check("a", {{"Movies/x", 1000}, {"Movies/y", 5000}},
                       {.unreadable = {{.relativePath = "Private"}}});
        history_.now = today;
        history_.check("a", {{"Movies/y", 5000}});
        selection().setDestination(Destination::history);
    }

    [[nodiscard]] bool show() {
        return shown_.show(std::make_shared<StoredHistory>(history_.sharedStore(), history_.calendar,
                                                           [this] { return history_.now; }));
    }
    [[nodiscard]] Selection& selection() { return *shown_.model().selection(); }
    [[nodiscard]] std::map<int, std::string> states() {
        std::map<int, std::string> states;
        for (const CalendarDayRow& row : page_.days()->rows())
            states[row.day.day] =
                row.state.toStdString() + (row.step == 0 ? "" : " " + std::to_string(row.step));
        return states;
    }

    TempHistory history_;
    ShownHistory shown_;
    StorageHistoryModel page_{shown_.model()};
};

TEST_F(StorageHistoryModelTest, ShowsTheMonthAndTheStatementOfTheSelectedDay) {
    ASSERT_TRUE(show());
    EXPECT_EQ(page_.month(), "March 2026");
    EXPECT_EQ(page_.weekCount(), 5);
    EXPECT_EQ(page_.days()->rowCount(), 31);
    auto found = states();
    EXPECT_EQ(found[3], "noCheck");
    EXPECT_EQ(found[4], "recorded");
    EXPECT_EQ(found[5], "noCheck");
    EXPECT_EQ(found[6], "partial 3");
    EXPECT_EQ(found[7], "recorded -1");
    EXPECT_EQ(found[8], "future");
    EXPECT_EQ(page_.monthCoverage(),
              "3 of 31 days recorded, 1 partial, 1 without a check, 3 not tracked, 24 yet to come");
    EXPECT_EQ(page_.monthFigures()->rows().at(1).amount, "+5.0 kB");

    EXPECT_EQ(page_.day(), "Saturday, March 7, 2026");
    EXPECT_EQ(page_.days()->rows().at(static_cast<std::size_t>(page_.selectedRow())).number, "7");
    EXPECT_EQ(page_.dayFigures()->rows().at(0).amount, "\u22121.0 kB");
    EXPECT_EQ(page_.dayFigures()->rows().at(2).tone, FigureTone::freed);
    EXPECT_EQ(page_.dayFigures()->rows().at(1).tone, FigureTone::neutral) << "nothing was added";
    ASSERT_TRUE(runUntil([&] { return !page_.daySentence().isEmpty(); }));
    EXPECT_EQ(page_.daySentence(), "1.0 kB went, all of it in Movies.");

    page_.moveByDays(-1);
    EXPECT_EQ(page_.daySentence(), "") << "the sentence of another day is gone at once";
    EXPECT_EQ(page_.dayWord(), "Partial");
    EXPECT_EQ(page_.dayNotes(), QStringList{"The record is partial: some folders of “a” couldn't be read."});
    ASSERT_TRUE(runUntil([&] { return !page_.daySentence().isEmpty(); }));
    EXPECT_EQ(page_.daySentence(), "5.0 kB came, all of it in Movies.");

    page_.moveByDays(-1);
    EXPECT_EQ(page_.dayFigures()->rowCount(), 0);
    EXPECT_EQ(page_.dayNotes(), QStringList{"No check covers this day."});
    EXPECT_FALSE(page_.hasChanges());
}

TEST_F(StorageHistoryModelTest, TheKeyboardMovesWithinWhatIsKeptAndOpensTheDay) {
    ASSERT_TRUE(show());
    page_.moveToWeekStart();
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 1}));
    page_.moveByMonths(-1);
    EXPECT_EQ(page_.month(), "February 2026");
    EXPECT_EQ(selection().day(), (LocalDay{2026, 2, 1}));
    EXPECT_EQ(page_.selectedRow(), 0);
    page_.moveToWeekEnd();
    EXPECT_EQ(selection().day(), (LocalDay{2026, 2, 7}));
    EXPECT_TRUE(page_.hasNextMonth());
    page_.moveByMonths(-9);
    EXPECT_EQ(page_.month(), "December 2025");
    EXPECT_FALSE(page_.hasPreviousMonth());
    page_.moveByMonths(9);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 7}));
    page_.selectRow(20);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 7})) << "nobody selects a day that is yet to come";
    page_.selectRow(5);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 6}));
    page_.moveToWeekEnd();
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 7}));

    // Of a period, the calendar shows the last day, and that is what it opens.
    selection().setPeriod({2026, 3, 4}, {2026, 3, 6});
    EXPECT_EQ(page_.day(), "Friday, March 6, 2026");
    page_.showChanges();
    EXPECT_EQ(selection().destination(), Destination::activity);
    EXPECT_EQ(selection().firstDay(), (LocalDay{2026, 3, 6}));
}

TEST_F(StorageHistoryModelTest, WhileItIsNotShownItFollowsNothing) {
    ASSERT_TRUE(show());
    selection().setDestination(Destination::activity);
    selection().setDay({2026, 2, 10});
    ASSERT_TRUE(show());
    EXPECT_EQ(page_.month(), "March 2026");
    selection().setDestination(Destination::history);
    EXPECT_EQ(page_.month(), "February 2026");
    EXPECT_EQ(page_.day(), "Tuesday, February 10, 2026");
}

}  // namespace
}  // namespace brindle
