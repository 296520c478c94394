#include "app/EventLoop.h"
#include "app/HistorySession.h"
#include "scan/LocationAccess.h"
#include "settings/WindowLock.h"
#include "support/TempHistory.h"
#include "support/TestMounts.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sqlite3.h>

namespace brindle {
namespace {

using testing::HasSubstr;

/// A session on a history with one folder, whose files are real.
class HistorySessionTest : public testing::Test {
protected:
    HistorySessionTest() {
        write("a", 1000);
        const Calendar calendar("en_US", "UTC");
        parts_ = {.dataDirectory = (folder_.path() / "data").string(),
                  .clock = {.calendar = [calendar] { return calendar; }}};
        LocationRecord record = makeCandidate(files().string(), {}, systemNow()).record;
        record.id = {"files"};
        HistoryStore(parts_.dataDirectory).insert(std::move(record)).get();
    }

    [[nodiscard]] std::filesystem::path files() const { return folder_.path() / "files"; }

    void write(const std::string& name, std::size_t bytes) const {
        std::filesystem::create_directories(files());
        std::ofstream(files() / name) << std::string(bytes, 'x');
    }

    /// What became of an attempt to open: the sentence of a failure, or nothing.
    static QString open(HistorySession& session) {
        std::optional<QString> end;
        const auto opened = QObject::connect(&session, &HistorySession::opened, [&] { end = ""; });
        const auto failed = QObject::connect(&session, &HistorySession::failed,
                                             [&](const QString& sentence) { end = sentence; });
        session.open(false);
        EXPECT_TRUE(runUntil([&] { return end.has_value(); }));
        QObject::disconnect(opened);
        QObject::disconnect(failed);
        return end.value_or("");
    }

    static void stop(HistorySession& session) {
        bool isStopped = false;
        QObject::connect(&session, &HistorySession::stopped, [&] { isStopped = true; });
        session.stop();
        EXPECT_TRUE(runUntil([&] { return isStopped; }));
    }

    TempFolder folder_;
    SessionParts parts_;
};

TEST_F(HistorySessionTest, AChecksEventsAndItsFiguresArriveOnTheMainThread) {
    HistorySession session(parts_);
    ASSERT_EQ(open(session), "");
    int runs = 0;
    std::optional<HistoryFigures> figures;
    std::vector<std::string> activities;
    QObject::connect(&session, &HistorySession::runFinished, [&](const CheckRunSummary& summary) {
        EXPECT_EQ(QThread::currentThread(), session.thread());
        EXPECT_EQ(summary.committed.size(), 1U);
        EXPECT_FALSE(session.isChecking());
        ++runs;
    });
    QObject::connect(&session, &HistorySession::activityChanged, [&] {
        if (session.activity()) activities.push_back(session.activity()->locationName);
    });
    QObject::connect(&session, &HistorySession::figuresLoaded,
                     [&](const HistoryFigures& loaded) { figures = loaded; });
    session.checkAll();
    ASSERT_TRUE(runUntil([&] { return figures.has_value(); }));
    EXPECT_EQ(runs, 1);
    EXPECT_THAT(activities, testing::Contains("files"));
    EXPECT_EQ(figures->records.at(0).trackedBytes, 1000);

    write("b", 500);
    figures.reset();
    session.checkAll();
    ASSERT_TRUE(runUntil([&] { return figures.has_value(); }));
    EXPECT_EQ(figures->snapshot.dayTotals.at({"files"}).at(figures->snapshot.today),
              (ChangeTotals{500, 0, 1}));
    stop(session);
}

TEST_F(HistorySessionTest, AHistoryThatCannotBeOpenedIsTriedAgainWhenAsked) {
    const std::filesystem::path file = std::filesystem::path(parts_.dataDirectory) / "History.sqlite";
    rowsOf(file.string(), "PRAGMA user_version = 99");
    HistorySession session(parts_);
    EXPECT_EQ(open(session), "This history was saved by a newer version of Brindle.");
    EXPECT_FALSE(session.isOpening());
    rowsOf(file.string(), "PRAGMA user_version = 5");
    EXPECT_EQ(open(session), "");
    stop(session);
}

TEST_F(HistorySessionTest, WhatAnotherProgramHoldsIsOpenedOnceItLetsGo) {
    const std::string file = parts_.dataDirectory + "/History.sqlite";
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(other, "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
        SQLITE_OK);
    HistorySession session(parts_);
    EXPECT_THAT(open(session).toStdString(), HasSubstr("Another program is writing"));
    sqlite3_close(other);
    EXPECT_EQ(open(session), "");
    stop(session);
}

TEST_F(HistorySessionTest, OnADiskThatIsFullFromTheStartItSaysSoAndOpensOnceThereIsRoom) {
    SKIP_UNLESS_MOUNTS_WORK();
    const std::filesystem::path disk = folder_.path() / "disk";
    std::filesystem::create_directory(disk);
    const TestMount mount = TestMount::memory(disk, "size=1m");
    std::ofstream filler(disk / "filler");
    while (filler.write(std::string(4096, 'x').data(), 4096).flush()) continue;
    parts_.dataDirectory = (disk / "data").string();
    HistorySession session(parts_);
    EXPECT_THAT(open(session).toStdString(), HasSubstr("no room left"));
    filler.close();
    std::filesystem::remove(disk / "filler");
    EXPECT_EQ(open(session), "");
    stop(session);
}

TEST_F(HistorySessionTest, ADamagedHistoryIsLeftAsItIs) {
    const std::filesystem::path file = std::filesystem::path(parts_.dataDirectory) / "History.sqlite";
    const std::string garbage(100'000, 'x');
    std::ofstream(file, std::ios::trunc) << garbage;
    HistorySession session(parts_);
    EXPECT_THAT(open(session).toStdString(), HasSubstr("is damaged and was left as it is"));
    std::ifstream left(file);
    EXPECT_EQ(std::string(std::istreambuf_iterator(left), {}), garbage);
    stop(session);
}

TEST_F(HistorySessionTest, OnAFullDiskItGoesOnBeingReadAndSaysWhyNothingIsChecked) {
    SKIP_UNLESS_MOUNTS_WORK();
    const std::filesystem::path disk = folder_.path() / "disk";
    std::filesystem::create_directory(disk);
    const TestMount mount = TestMount::memory(disk, "size=3m");
    std::filesystem::copy(parts_.dataDirectory, disk / "data", std::filesystem::copy_options::recursive);
    parts_.dataDirectory = (disk / "data").string();
    HistorySession session(parts_);
    ASSERT_EQ(open(session), "");
    std::ofstream filler(disk / "filler");
    while (filler.write(std::string(4096, 'x').data(), 4096).flush()) continue;
    for (int i = 0; i < 3000; ++i)
        write("a file with a long name, so that it takes room " + std::to_string(i), 1);

    std::optional<CheckRunSummary> run;
    std::optional<HistoryFigures> figures;
    QObject::connect(&session, &HistorySession::runFinished,
                     [&](const CheckRunSummary& summary) { run = summary; });
    QObject::connect(&session, &HistorySession::figuresLoaded,
                     [&](const HistoryFigures& loaded) { figures = loaded; });
    session.checkAll();
    ASSERT_TRUE(runUntil([&] { return run && figures; }));
    ASSERT_TRUE(run->failures.contains({"files"}));
    EXPECT_THAT(run->failures.at({"files"}), HasSubstr("no room left"));
    EXPECT_EQ(figures->records.size(), 1U);
    stop(session);
}

TEST_F(HistorySessionTest, DamageBehindTheListOfTablesIsSeenWhenItOpensAndCanBeRecoveredFrom) {
    const std::filesystem::path file = std::filesystem::path(parts_.dataDirectory) / "History.sqlite";
    constexpr std::streamoff firstPage = 4096;
    std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).seekp(firstPage)
        << std::string(std::filesystem::file_size(file) - firstPage, 'x');
    HistorySession session(parts_);
    EXPECT_THAT(open(session).toStdString(), HasSubstr("is damaged"));
    bool isRecovered = false;
    QObject::connect(&session, &HistorySession::recovered, [&] { isRecovered = true; });
    session.recover();
    ASSERT_TRUE(runUntil([&] { return isRecovered; }));
    EXPECT_EQ(open(session), "");
    stop(session);
}

TEST_F(HistorySessionTest, OneWindowAHistory) {
    HistorySession first(parts_);
    ASSERT_EQ(open(first), "");
    {
        HistorySession second(parts_);
        EXPECT_THAT(open(second).toStdString(), HasSubstr("Another Brindle window"));
        stop(second);
    }
    EXPECT_TRUE(isWindowRunning(parts_.dataDirectory));
    stop(first);
}

TEST_F(HistorySessionTest, StoppingWaitsForTheCheckAndEmptiesTheLog) {
    for (int i = 0; i < 3000; ++i) write("file " + std::to_string(i), 1);
    HistorySession session(parts_);
    ASSERT_EQ(open(session), "");
    session.checkAll();
    ASSERT_TRUE(runUntil([&] { return session.isChecking(); }));
    stop(session);
    EXPECT_EQ(session.store()->logBytes(), 0U);
    session.checkAll();
    session.checkThese({{"files"}});
    QCoreApplication::processEvents();
    EXPECT_TRUE(rowsOf(parts_.dataDirectory + "/History.sqlite", "SELECT 1 FROM observations").empty());
}

}  // namespace
}  // namespace brindle
