#include "app/pages/ActivityModel.h"
#include "app/pages/FixedHistory.h"
#include "app/pages/ShownHistory.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr LocalDay today{2026, 3, 7};
constexpr LocalDay yesterday{2026, 3, 6};
constexpr LocalDay unchecked{2026, 3, 5};
constexpr LocalDay estimatedDay{2026, 2, 20};

class ActivityModelTest : public testing::Test {
protected:
    ActivityModelTest() {
        history_->known.today = today;
        history_->include("home", "Home", {2026, 3, 1});
        history_->include("studio", "Studio", {2026, 3, 1});
        history_->record("home", today, {"Movies"}, 12'000);
        history_->record("home", today, {"Mail"}, -2000);
        history_->record("studio", today, {}, 0);
        history_->record("home", yesterday, {"Movies"}, 500);
        history_->known.estimates[{"home"}][estimatedDay] = {7000, 3};
        history_->estimates.push_back({.id = 1,
                                       .locationID = {"home"},
                                       .name = "old",
                                       .byteDelta = 7000,
                                       .day = estimatedDay,
                                       .source = ChangeSource::estimated,
                                       .fileCount = 3});
        shown_.model().settings()->setShowsEstimates(true);
    }

    [[nodiscard]] bool show(const LocalDay& first, const LocalDay& last) {
        shown_.model().selection()->setPeriod(first, last);
        return runUntil([&] { return activity_.explorer()->isAnswered(); });
    }

    std::shared_ptr<FixedHistory> history_ = std::make_shared<FixedHistory>();
    ShownHistory shown_;
    ActivityModel activity_{shown_.model()};
};

TEST_F(ActivityModelTest, ARecordedDayAndTheDaysBesideIt) {
    ASSERT_TRUE(shown_.show(history_));
    ASSERT_TRUE(show(today, today));
    EXPECT_EQ(activity_.title(), "Saturday, March 7, 2026");
    EXPECT_TRUE(activity_.isToday());
    EXPECT_FALSE(activity_.hasNextDay());
    EXPECT_EQ(activity_.net(), "+10.0 kB");
    EXPECT_EQ(activity_.netExact(), "10,000 bytes");
    EXPECT_EQ(activity_.added(), "+12.0 kB");
    EXPECT_EQ(activity_.freed(), "−2.0 kB");
    EXPECT_EQ(activity_.files(), "2");
    EXPECT_EQ(activity_.coverage(), "");
    EXPECT_EQ(activity_.estimated(), "");
    EXPECT_TRUE(activity_.explanation().contains("Movies")) << activity_.explanation().toStdString();

    activity_.moveDay(-1);
    EXPECT_EQ(activity_.title(), "Friday, March 6, 2026");
    EXPECT_EQ(activity_.net(), "+500 bytes");
    EXPECT_EQ(activity_.explanation(), "") << "not before the changes of the day are read";
    EXPECT_TRUE(activity_.isPartial());
    EXPECT_EQ(activity_.coverage(), "The record is partial: no check of “Studio” on this day.");
    EXPECT_TRUE(activity_.hasNextDay());
    activity_.showToday();
    EXPECT_TRUE(activity_.isToday());
}

TEST_F(ActivityModelTest, DaysWithoutFiguresSayWhy) {
    ASSERT_TRUE(shown_.show(history_));
    ASSERT_TRUE(show(unchecked, unchecked));
    EXPECT_FALSE(activity_.hasFigures());
    EXPECT_EQ(activity_.net(), "");
    EXPECT_EQ(activity_.explorer()->emptySentence(), "No check covers this day.");

    ASSERT_TRUE(show(estimatedDay, estimatedDay));
    EXPECT_FALSE(activity_.hasFigures());
    EXPECT_EQ(activity_.coverage(), "An estimate from the dates of files: no check covers this day.");
    EXPECT_EQ(activity_.estimated(), "7.0 kB");
    EXPECT_EQ(activity_.estimatedExact(), "7,000 bytes");

    // Unless they are wanted, there are no estimates.
    shown_.model().settings()->setShowsEstimates(false);
    ASSERT_TRUE(runUntil([&] { return activity_.estimated().isEmpty(); }));
    EXPECT_EQ(activity_.coverage(), "");
    EXPECT_EQ(activity_.explorer()->emptySentence(), "Nothing was tracked on this day.");
}

TEST_F(ActivityModelTest, APeriodTellsWhatItsFiguresRestOn) {
    ASSERT_TRUE(shown_.show(history_));
    ASSERT_TRUE(show({2026, 2, 20}, today));
    EXPECT_EQ(activity_.title(), "Friday, February 20 to Saturday, March 7, 2026");
    EXPECT_EQ(activity_.net(), "+10.5 kB");
    EXPECT_EQ(activity_.estimated(), "7.0 kB");
    EXPECT_EQ(activity_.coverage(),
              "2 of 16 days recorded, 1 partial, 1 estimated, 5 without a check, 8 not tracked.");
    ASSERT_TRUE(show({2026, 3, 2}, {2026, 3, 4}));
    EXPECT_EQ(activity_.explorer()->emptySentence(), "No check covers these days.");
}

TEST_F(ActivityModelTest, BeforeAnyCheckItSaysWhatWillBeHere) {
    auto empty = std::make_shared<FixedHistory>();
    empty->known.today = today;
    ASSERT_TRUE(shown_.show(empty));
    ASSERT_TRUE(show(today, today));
    EXPECT_EQ(activity_.explorer()->emptySentence(),
              "Nothing has been checked yet. What changes between checks is listed here.");
    EXPECT_EQ(activity_.explorer()->emptyActionText(), "");
}

}  // namespace
}  // namespace brindle
