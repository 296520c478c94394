#include "app/pages/ShownHistory.h"
#include "app/pages/TrendsModel.h"
#include "store/StoredHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::ElementsAre;

constexpr UnixTime aDay = 86'400;

/// A location "a", tracked since ten days ago and checked on each of them but yesterday. Today is Saturday,
/// March 7, 2026.
class TrendsModelTest : public testing::Test {
protected:
    TrendsModelTest() {
        const UnixTime today = history_.now;
        history_.now = today - 10 * aDay;
        history_.include("a");
        Files files{{"Movies/first", 1000}};
        history_.check("a", files);
        for (int day = 9; day >= 0; --day) {
            history_.now = today - day * aDay;
            files["Movies/" + std::to_string(day)] = 4000;
            if (day == 3) files.erase("Movies/first");
            if (day != 1) history_.check("a", files);
        }
        selection().setDestination(Destination::trends);
    }

    [[nodiscard]] bool show() {
        return shown_.show(std::make_shared<StoredHistory>(history_.sharedStore(), history_.calendar,
                                                           [this] { return history_.now; }));
    }
    [[nodiscard]] Selection& selection() { return *shown_.model().selection(); }
    [[nodiscard]] std::vector<std::string> figures(FigureList& list) {
        std::vector<std::string> texts;
        for (const FigureRow& row : list.rows())
            texts.push_back((row.caption + " " + row.amount + " (" + row.before + ")").toStdString());
        return texts;
    }

    TempHistory history_;
    ShownHistory shown_;
    TrendsModel page_{shown_.model()};
};

TEST_F(TrendsModelTest, AWeekHasItsBarsItsGapsAndTheSizeCarriedOver) {
    ASSERT_TRUE(show());
    EXPECT_EQ(page_.period(), "Sun, Mar 1 – Sat, Mar 7");
    ASSERT_EQ(page_.days()->rowCount(), 7);
    const auto& days = page_.days()->rows();
    EXPECT_EQ(days[5].state, "noCheck");
    EXPECT_EQ(days[5].addedLength, 0);
    EXPECT_EQ(days[5].added, "");
    EXPECT_EQ(days[5].tracked, days[4].tracked);
    EXPECT_EQ(days[5].reading, "Friday, March 6: No check. Tracked size 32.0 kB.");
    // Both sides and the zero line are of one scale: 8.0 kB came on the last day, 1.0 kB went on the fourth.
    EXPECT_NEAR(days[6].addedLength, 8 * days[3].freedLength, 1e-9);
    EXPECT_LE(days[3].freedLength, page_.zeroPlace());
    EXPECT_LE(page_.zeroPlace() + days[6].addedLength, 1);
    EXPECT_EQ(page_.sizeShares().size(), 7);
    EXPECT_LE(page_.sizeShares().front(), page_.sizeShares().back());
    EXPECT_EQ(page_.dayMarks()->rowCount(), 7);
    EXPECT_EQ(page_.dayMarks()->rows().front().weekday, "Sun");

    EXPECT_THAT(figures(*page_.figures()), ElementsAre("Net change +27.0 kB ()", "Added +28.0 kB ()",
                                                       "Freed \u22121.0 kB ()", "Tracked size 40.0 kB ()"));
    EXPECT_EQ(page_.comparison(),
              "There is nothing to compare with: tracking began on Wednesday, February 25.");
    EXPECT_EQ(page_.coverage(), "6 of 7 days recorded, 1 without a check");
}

TEST_F(TrendsModelTest, ARangeThatEndsEarlierIsComparedWhereItCanBe) {
    ASSERT_TRUE(show());
    EXPECT_TRUE(page_.hasEarlier());
    EXPECT_FALSE(page_.hasLater());
    page_.chooseRange(2);
    EXPECT_EQ(page_.days()->rowCount(), 90);
    EXPECT_FALSE(page_.hasEarlier());
    EXPECT_EQ(page_.sizeShares().front(), -1) << "before tracking began, no size is known";
    EXPECT_LT(page_.dayMarks()->rowCount(), 14);
    page_.moveByRanges(-1);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 7}));
    page_.chooseRange(0);
    page_.moveByRanges(-1);
    EXPECT_EQ(page_.period(), "Sun, Feb 22 – Sat, Feb 28");
    EXPECT_TRUE(page_.hasLater());
    page_.moveByRanges(-20);
    EXPECT_EQ(selection().day(), (LocalDay{2025, 12, 14}))
        << "no range begins before the first day that is kept";
    page_.showToday();
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 7}));
}

TEST_F(TrendsModelTest, TheDayThatIsReadStaysUntilTheRangeIsAnotherOne) {
    ASSERT_TRUE(show());
    EXPECT_EQ(page_.currentRow(), 6);
    page_.setCurrentRow(3);
    EXPECT_EQ(page_.currentDay(), "Wednesday, March 4, 2026");
    EXPECT_THAT(figures(*page_.currentFigures()),
                ElementsAre("Net change +3.0 kB ()", "Added +4.0 kB ()", "Freed \u22121.0 kB ()",
                            "Tracked size 28.0 kB ()"));
    ASSERT_TRUE(show());
    EXPECT_EQ(page_.currentRow(), 3);
    page_.setCurrentRow(-4);
    EXPECT_EQ(page_.currentRow(), 0);
    page_.chooseRange(1);
    EXPECT_EQ(page_.currentRow(), 29);

    page_.showDay(26);
    EXPECT_EQ(selection().day(), (LocalDay{2026, 3, 4}));
    EXPECT_EQ(selection().destination(), Destination::activity);
}

TEST_F(TrendsModelTest, AFolderOpensWithTheChangesOfTheWholeRange) {
    ASSERT_TRUE(show());
    ASSERT_TRUE(runUntil([&] { return page_.contributors()->rowCount() == 1; }));
    page_.showFolder(0);
    EXPECT_EQ(selection().destination(), Destination::activity);
    EXPECT_EQ(selection().firstDay(), (LocalDay{2026, 3, 1}));
    EXPECT_EQ(selection().explorer().folder, (FolderRef{{"a"}, {"Movies"}}));
}

}  // namespace
}  // namespace brindle
