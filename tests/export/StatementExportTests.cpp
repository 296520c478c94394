#include "export/StatementExport.h"
#include "export/StatementsFolder.h"
#include "store/StoredHistory.h"
#include "support/TempHistory.h"

#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr UnixTime secondsOfDay = 86'400;
constexpr LocalDay firstDay{2026, 3, 7};
constexpr LocalDay secondDay{2026, 3, 8};

/// Two locations with changes on two days.
class StatementExport : public testing::Test {
protected:
    StatementExport() {
        for (const auto* id : {"one", "two"}) {
            history.include(id);
            history.check(id, {{"a", 1}});
        }
        history.now += 3600;
        history.check("one", {{"a", 2}, {"folder/b", 1}});
        history.check("two", {});
        history.now += secondsOfDay;
        history.check("one", {{"a", 2}, {"folder/b", 3}});
    }

    void estimate(const std::string& location, const LocalDay& day, int files) {
        const auto name = files == 1 ? "old" : "";
        (void)history.rows(
            fmt::format("INSERT INTO estimates (location_id, local_day, folder, name, bytes, file_count, "
                        "contributor, made_at) VALUES ('{}', '{}', 'past', '{}', 10, {}, '', 0)",
                        location, day.text(), name, files));
    }

    [[nodiscard]] std::optional<ExportPlan> plan(const LocalDay& first, const LocalDay& last,
                                                 const LocationScope& scope = {}) {
        return planExport(source(), first, last, scope, false);
    }
    [[nodiscard]] std::string summary(const LocalDay& first, const LocalDay& last,
                                      const LocationScope& scope = {}) {
        return planSummary(plan(first, last, scope).value(), history.calendar);
    }

    std::int64_t write(
        const ExportPlan& plan, const ExportProgress& progress = [](std::int64_t) {}) {
        return exportStatement(plan, openOutputFile(destination), source(), source().snapshot().get(),
                               history.calendar, cancel, progress);
    }

    /// The lines of the statement, without the names of the columns.
    [[nodiscard]] std::vector<std::string> lines() const {
        std::ifstream stream(destination);
        std::vector<std::string> all;
        for (std::string line; std::getline(stream, line);) all.push_back(line);
        all.erase(all.begin());
        return all;
    }

    [[nodiscard]] HistorySource& source() {
        if (!source_)
            source_ = std::make_unique<StoredHistory>(history.sharedStore(), history.calendar,
                                                      [this] { return history.now; });
        return *source_;
    }

    TempHistory history;
    TempFolder folder;
    fs::path destination = folder.path() / "statement.csv";
    CancellationFlag cancel;

private:
    std::unique_ptr<HistorySource> source_;
};

TEST_F(StatementExport, ThePlanSaysWhatTheStatementWillHold) {
    const std::string end = " Search and direction filters don't apply.";
    EXPECT_EQ(summary(secondDay, secondDay),
              "Includes 1 recorded change on Sunday, March 8 in all locations." + end);
    EXPECT_EQ(
        summary(firstDay, secondDay, {LocationID{"one"}}),
        "Includes all 3 recorded changes from Saturday, March 7 to Sunday, March 8 in this location." + end);
    EXPECT_EQ(plan(firstDay, firstDay, {LocationID{"three"}}), std::nullopt);
    EXPECT_EQ(plan({2026, 3, 9}, {2026, 3, 20}), std::nullopt);

    estimate("one", {2026, 3, 1}, 1);
    EXPECT_EQ(
        summary({2026, 3, 1}, {2026, 3, 1}),
        "Includes all 0 recorded changes on Sunday, March 1 in all locations." + end +
            " Estimates from file dates for 1 file before Brindle started are listed separately, marked "
            "Estimated.");
    estimate("two", {2026, 3, 2}, 1239);
    EXPECT_THAT(summary({2026, 3, 1}, secondDay),
                HasSubstr(" Estimates from file dates for 1,240 files before"));

    auto example = plan(firstDay, secondDay);
    EXPECT_EQ(suggestedFileName(*example), "Brindle-2026-03-08.csv");
    example->isExample = true;
    EXPECT_EQ(suggestedFileName(*example), "Brindle-example-2026-03-08.csv");
    EXPECT_THAT(planSummary(*example, history.calendar),
                testing::EndsWith(end + " These are example records, and the statement says so."));
    EXPECT_NE(plan(firstDay, firstDay)->id, plan(firstDay, firstDay)->id);
}

TEST_F(StatementExport, HoldsTheMeasuredRowsInTheirOrderAndThenTheEstimates) {
    estimate("two", {2026, 3, 7}, 1);
    estimate("one", {2026, 3, 8}, 5);
    (void)history.rows("DELETE FROM locations WHERE id = 'two'");
    const auto all = plan(firstDay, secondDay).value();
    EXPECT_EQ(write(all), 6);
    EXPECT_THAT(
        lines(),
        testing::ElementsAre(
            "2026-03-07,2026-03-07T13:00:00+0000,a,/one,/one/a,1,Grew,one,Measured,1\r",
            "2026-03-07,2026-03-07T13:00:00+0000,b,/one/folder,/one/folder/b,1,Added,one,Measured,1\r",
            "2026-03-07,2026-03-07T13:00:00+0000,a,,a,-1,Removed,Removed location,Measured,1\r",
            "2026-03-08,2026-03-08T13:00:00+0000,b,/one/folder,/one/folder/b,2,Grew,one,Measured,1\r",
            "2026-03-07,,old,past,past/old,10,Added,Removed location,Estimated,1\r",
            "2026-03-08,,5 smaller files,/one/past,/one/past,10,Added,one,Estimated,5\r"));
    EXPECT_EQ(write(plan(firstDay, firstDay, {LocationID{"one"}}).value()), 2);
    EXPECT_EQ(lines().size(), 2U);
    EXPECT_THAT(history.rows("SELECT path FROM exported_files"), IsEmpty());
}

TEST_F(StatementExport, StoppedOrFailedLeavesTheFileThatWasThere) {
    std::ofstream(destination) << "old";
    const auto expectOld = [&] {
        EXPECT_EQ(fs::file_size(destination), 3U);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
    };
    const auto all = plan(firstDay, secondDay).value();
    EXPECT_THROW(write(all, [](std::int64_t) { throw std::runtime_error("the source fails"); }),
                 std::runtime_error);
    expectOld();
    EXPECT_THROW(write(all, [this](std::int64_t) { cancel.set(); }), Cancelled);
    expectOld();
    EXPECT_EQ(exportFailure("The disk is full."), "The statement couldn't be saved. The disk is full.");
}

TEST_F(StatementExport, GoesBesideTheLatestOneThatIsStillThere) {
    const auto suggested = [&](const std::vector<std::string>& exports) {
        return statementsFolder(exports, "/home/ann/Documents", MountTable::current());
    };
    std::ofstream(destination).close();
    EXPECT_EQ(suggested({}), "/home/ann/Documents");
    EXPECT_EQ(suggested({"/nowhere/a.csv", folder.path() / "b.csv"}), "/home/ann/Documents");
    EXPECT_EQ(suggested({folder.path() / "b.csv", destination, "/etc/passwd"}), folder.path());
}

}  // namespace
}  // namespace brindle
