#include "app/EventLoop.h"
#include "app/StatementExporter.h"
#include "store/StoredHistory.h"
#include "support/TempHistory.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class StatementExporterTest : public testing::Test {
protected:
    StatementExporterTest() {
        history_.include("a");
        history_.check("a", {});
        Files files;
        for (int i = 0; i < 5000; ++i) files["folder/file " + std::to_string(i)] = 10;
        history_.check("a", files);
        QObject::connect(&exporter_, &StatementExporter::nothingToExport,
                         [this](const QString& sentence) { sentence_ = sentence.toStdString(); });
    }

    [[nodiscard]] LocalDay today() const { return history_.calendar.day(history_.now); }
    [[nodiscard]] std::string path(const std::string& name) const { return (folder_.path() / name).string(); }

    StatementExporter::Subject subject(bool isExample = false) {
        auto source = std::make_shared<StoredHistory>(history_.sharedStore(), history_.calendar,
                                                      [this] { return history_.now; });
        HistorySnapshot snapshot = source->snapshot().get();
        snapshot.isExample = isExample;
        return {.source = source,
                .snapshot = std::move(snapshot),
                .calendar = history_.calendar,
                .records = {.recent = [this] { return std::vector{path("earlier.csv")}; },
                            .add = [this](const std::string& added) { recorded_.push_back(added); }}};
    }

    void plan(bool isExample = false) {
        exporter_.prepare(subject(isExample), today(), today(), {});
        ASSERT_TRUE(runUntil([&] { return exporter_.plan().has_value(); }));
    }

    [[nodiscard]] std::vector<std::string> left() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            names.push_back(entry.path().filename().string());
        return names;
    }

    TempHistory history_;
    TempFolder folder_;
    std::vector<std::string> recorded_;
    std::string sentence_;
    StatementExporter exporter_;
};

TEST_F(StatementExporterTest, FromThePlanToTheFileAndItsRecord) {
    std::ofstream(path("earlier.csv")) << "an earlier statement";
    plan();
    EXPECT_THAT(exporter_.summary(), HasSubstr("Includes all 5,000 recorded changes on "));
    EXPECT_EQ(exporter_.suggestedPath(), path("Brindle-" + today().text() + ".csv"));
    exporter_.write(path("s.csv"));
    EXPECT_TRUE(exporter_.isWriting());
    ASSERT_TRUE(runUntil([&] { return exporter_.finished().has_value(); }));
    EXPECT_FALSE(exporter_.isWriting());
    EXPECT_FALSE(exporter_.plan());
    EXPECT_THAT(recorded_, ElementsAre(path("s.csv")));
    std::ifstream file(path("s.csv"));
    const std::string text((std::istreambuf_iterator(file)), std::istreambuf_iterator<char>());
    EXPECT_EQ(std::ranges::count(text, '\n'), 5001);
}

TEST_F(StatementExporterTest, TheExampleIsNeverRecorded) {
    plan(true);
    exporter_.write(path("s.csv"));
    ASSERT_TRUE(runUntil([&] { return exporter_.finished().has_value(); }));
    EXPECT_THAT(recorded_, IsEmpty());
}

TEST_F(StatementExporterTest, StoppedOrFailedItLeavesNothing) {
    plan();
    exporter_.write(path("s.csv"));
    exporter_.stop();
    ASSERT_TRUE(runUntil([&] { return !exporter_.isWriting(); }));
    EXPECT_FALSE(exporter_.failure());
    EXPECT_FALSE(exporter_.finished());
    EXPECT_THAT(left(), IsEmpty());

    plan();
    exporter_.write(path("no such folder/s.csv"));
    ASSERT_TRUE(runUntil([&] { return exporter_.failure().has_value(); }));
    EXPECT_THAT(*exporter_.failure(), testing::StartsWith("The statement couldn't be saved. "));
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_THAT(recorded_, IsEmpty());
}

TEST_F(StatementExporterTest, NothingToExportIsSaid) {
    const LocalDay before{2020, 1, 1};
    exporter_.prepare(subject(), before, before, {});
    ASSERT_TRUE(runUntil([&] { return !sentence_.empty(); }));
    EXPECT_FALSE(exporter_.plan());
    EXPECT_EQ(sentence_, "No changes are recorded for this scope, so there's nothing to export.");
}

}  // namespace
}  // namespace brindle
