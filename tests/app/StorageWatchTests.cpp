#include "app/StorageWatch.h"
#include "app/pages/FixedHistory.h"
#include "app/pages/ShownHistory.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr std::int64_t MB = 1'000'000;
constexpr std::int64_t GB = 1'000 * MB;
constexpr LocalDay today{2026, 3, 7};
constexpr double secondsPerDay = 86'400;

/// A history of thirty days in which a folder grew a little every day.
class NoticesOf : public testing::Test {
protected:
    NoticesOf() {
        history.known.today = today;
        history.include("home", "Home", calendar.addingDays(today, -31)).lastCheck = noon;
        for (int day = -30; day < 0; ++day)
            history.record("home", calendar.addingDays(today, day), {"Movies", "Raw"}, 200 * MB);
        history.known.checkedDays[{"home"}].insert(today);
    }

    FileChange& change(const FolderPath& folder, std::int64_t bytes, const std::string& name = "file") {
        history.record("home", today, folder, bytes);
        history.changes.back().name = name;
        return history.changes.back();
    }
    [[nodiscard]] std::string found() {
        const auto notice = finder.find(history, history.known, told, calendar);
        return notice ? notice->subject + ": " + notice->title + ". " + notice->text : "";
    }
    /// What was told so many days ago.
    void tell(const std::map<std::string, int>& days) {
        std::string text;
        for (const auto& [subject, ago] : days)
            text += fmt::format("{}\"{}\":\"{}\"", text.empty() ? "" : ",", subject,
                                calendar.addingDays(today, -ago).text());
        told = ToldNotices("{" + text + "}");
    }
    /// A drive that fills by so much a day and has so much left.
    void fill(const std::string& id, std::int64_t left, std::int64_t perDay) {
        for (int day = -60; day <= 0; ++day) {
            VolumeReading reading{.id = id,
                                  .name = "Disk <" + id + ">",
                                  .totalBytes = 1'000 * GB,
                                  .freeBytes = left - day * perDay,
                                  .availableBytes = left - day * perDay,
                                  .readAt = noon + day * secondsPerDay};
            if (day == 0) history.known.volumes.push_back(reading);
            history.samples.push_back(std::move(reading));
        }
    }

    Calendar calendar{"en_US", "UTC"};
    UnixTime noon = calendar.time(today, 12);
    FixedHistory history;
    ToldNotices told;
    NoticeFinder finder;
};

TEST_F(NoticesOf, UnusualGrowthIsThatOfTheFolderWhichGrewMost) {
    EXPECT_EQ(found(), "");
    change({"Movies", "Raw", "A001"}, 900 * MB);
    EXPECT_EQ(found(), "") << "too little to be news";
    change({"Movies", "Raw", "A002"}, 1'100 * MB);
    EXPECT_EQ(found(),
              "growth: Movies/Raw grew by 2.0 GB today. On most days it grows by less than 200.0 MB.");
    change({"Down\nloads"}, 3 * GB);
    EXPECT_EQ(found(), "growth: Down\\nloads grew by 3.0 GB today. On most days it doesn't grow at all.");
    change({"Down\nloads"}, -1'500 * MB);
    EXPECT_THAT(found(), testing::HasSubstr("Movies/Raw")) << "what came and went again is no growth";
}

TEST_F(NoticesOf, WhatLikelyMovedIsNoGrowth) {
    change({"Movies", "Raw"}, 2 * GB, "a.mov");
    change({"Desktop"}, -2 * GB, "a.mov");
    EXPECT_EQ(found(), "");
    change({"Movies", "Raw"}, 2 * GB, "b.mov");
    EXPECT_THAT(found(), testing::StartsWith("growth: Movies/Raw grew by 2.0 GB today."));
}

TEST_F(NoticesOf, GrowthIsNotJudgedByTooShortAPastNorAfterDaysWithoutChecks) {
    change({"Movies", "Raw"}, 2 * GB);
    ASSERT_NE(found(), "");
    auto& checked = history.known.checkedDays[{"home"}];
    for (int day = -1; day > -4; --day) checked.erase(calendar.addingDays(today, day));
    EXPECT_EQ(found(), "");
    checked.insert(calendar.addingDays(today, -3));
    EXPECT_NE(found(), "");
    for (int day = -30; day < -16; ++day) checked.erase(calendar.addingDays(today, day));
    EXPECT_NE(found(), "");
    history.known.locations[0].trackingStart = calendar.addingDays(today, -16);
    EXPECT_EQ(found(), "") << "the first check tells of no growth";
}

TEST_F(NoticesOf, OnlyOneADayAndTheMostPressingFirst) {
    change({"Movies", "Raw"}, 2 * GB);
    history.include("away", "Away", {2026, 1, 1}).status = LocationStatus::disconnected;
    history.known.locations.back().lastCheck = noon - 7 * secondsPerDay;
    fill("slow", 30 * GB, GB);
    fill("fast", 10 * GB, 2 * GB);
    EXPECT_THAT(found(),
                testing::StartsWith("drive fast: “Disk <fast>” will be full soon. At the pace since"));
    tell({{"drive fast", 6}});
    EXPECT_THAT(found(), testing::StartsWith("growth: Home/Movies/Raw grew")) << "the slow one has time";
    history.changes.pop_back();
    EXPECT_EQ(found(),
              "location away: “Away” can't be found. It was last checked on Saturday, February 28, "
              "7 days ago. Its history is kept.");
    tell({{"drive fast", 6}, {"location away", 6}});
    EXPECT_EQ(found(), "");
    tell({{"drive fast", 6}, {"location away", 7}});
    EXPECT_NE(found(), "") << "it was there after that";
    history.known.locations.back().lastCheck = noon - 6 * secondsPerDay;
    EXPECT_EQ(found(), "");
    tell({{"drive fast", 7}});
    EXPECT_NE(found(), "");
    tell({{"drive fast", 7}, {"growth", 0}});
    EXPECT_EQ(found(), "");
}

TEST(ToldNotices, OutliveARestartButNotWhatIsNoMemoryOfThem) {
    ToldNotices told;
    told.add("drive \"a\"\xff", {2026, 1, 1}, {2025, 10, 1});
    told.add("growth", today, {2026, 1, 1});
    const ToldNotices read(told.text());
    EXPECT_TRUE(read.hasAnyOn(today));
    EXPECT_EQ(read.lastDay("growth", today), today);
    EXPECT_EQ(read.lastDay("growth", {2026, 3, 6}), std::nullopt) << "the clock was wrong";
    told.add("growth", {2026, 3, 6}, {2026, 1, 2});
    EXPECT_EQ(told.text(), R"({"growth":"2026-03-06"})");
    for (const char* text : {"", "{", "[1]", R"({"growth":1,"drive":"yesterday"})"})
        EXPECT_EQ(ToldNotices(text).text(), "{}") << text;
}

TEST(StorageWatch, TellsAfterARunWhenTheUserWantsItAndLeadsToThePage) {
    TempHistory stored;
    stored.include("home");
    stored.check("home", {{"a", 1}});
    stored.close();
    ShownHistory shown(stored.now + 8 * secondsPerDay);
    ASSERT_TRUE(shown.open(stored.directory()));
    AppModel& model = shown.model();
    StorageWatch watch(model);
    std::vector<StorageNotice> notices;
    QObject::connect(&watch, &StorageWatch::noticed,
                     [&](const StorageNotice& notice) { notices.push_back(notice); });
    bool isTaken = false;
    QObject::connect(&model, &AppModel::runTaken, [&] { isTaken = true; });
    model.checkNow();
    ASSERT_TRUE(runUntil([&] { return isTaken; }));
    EXPECT_TRUE(notices.empty());

    model.settings()->setNotifiesAboutGrowth(true);
    ASSERT_TRUE(runUntil([&] { return !notices.empty(); }));
    EXPECT_EQ(notices.front().subject, "location home");
    EXPECT_EQ(model.settings()->toldNotices(), R"({"location home":"2026-03-15"})");
    watch.explain(notices.front());
    EXPECT_EQ(model.selection()->destination(), Destination::locations);

    const FolderRef folder{{"home"}, {"Movies"}};
    model.selection()->setScope({LocationID{"other"}});
    watch.explain({.subject = "growth", .day = today, .folder = folder});
    EXPECT_EQ(model.selection()->destination(), Destination::activity);
    EXPECT_EQ(model.selection()->day(), today);
    EXPECT_EQ(model.selection()->scope(), LocationScope());
    EXPECT_EQ(model.selection()->explorer().folder, folder);
}

}  // namespace
}  // namespace brindle
