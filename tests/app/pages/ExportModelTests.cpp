#include "app/pages/ExportModel.h"
#include "app/pages/FixedHistory.h"
#include "app/pages/ShownHistory.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::HasSubstr;

constexpr LocalDay today{2026, 3, 7};

class ExportModelTest : public testing::Test {
protected:
    ExportModelTest() {
        history_->known.today = today;
        history_->include("home", "Home", {2026, 3, 1});
        history_->record("home", today, {"Movies"}, 12'000);
        QObject::connect(&export_, &ExportModel::destinationRequested,
                         [this](const std::string& path) { suggested_ = path; });
        QObject::connect(&export_, &ExportModel::revealRequested,
                         [this](const std::string& path) { revealed_ = path; });
    }

    [[nodiscard]] bool reaches(ExportModel::Step step) {
        return runUntil([&] { return export_.step() == step; });
    }
    [[nodiscard]] bool isPlanned() {
        if (!shown_.show(history_)) return false;
        shown_.model().prepareExport();
        return reaches(ExportModel::Confirming);
    }
    [[nodiscard]] std::string path(const std::string& name) const { return (folder_.path() / name).string(); }

    std::shared_ptr<FixedHistory> history_ = std::make_shared<FixedHistory>();
    TempFolder folder_;
    ShownHistory shown_;
    ExportModel export_{shown_.model()};
    std::string suggested_;
    std::string revealed_;
};

TEST_F(ExportModelTest, FromThePlanToTheFinishedFile) {
    ASSERT_TRUE(isPlanned());
    EXPECT_THAT(export_.summary().toStdString(), HasSubstr("Includes 1 recorded change on "));
    export_.confirm();
    EXPECT_EQ(export_.step(), ExportModel::Choosing);
    EXPECT_THAT(suggested_, HasSubstr("2026-03-07"));
    export_.write(path("s.csv"));
    ASSERT_TRUE(reaches(ExportModel::Finished));
    EXPECT_EQ(export_.finishedText(), "Your storage statement is ready.");
    EXPECT_EQ(export_.finishedPath().toStdString(), path("s.csv"));
    EXPECT_EQ(export_.revealText(), "Show in Files");
    export_.reveal();
    EXPECT_EQ(revealed_, path("s.csv"));
    EXPECT_EQ(export_.step(), ExportModel::Idle);
    EXPECT_TRUE(std::filesystem::exists(path("s.csv")));
}

TEST_F(ExportModelTest, EveryStepCanBeLeft) {
    ASSERT_TRUE(isPlanned());
    export_.dismiss();
    EXPECT_EQ(export_.step(), ExportModel::Idle);
    export_.confirm();
    EXPECT_EQ(suggested_, "");

    ASSERT_TRUE(isPlanned());
    export_.confirm();
    export_.cancelChoosing();
    EXPECT_EQ(export_.step(), ExportModel::Idle);
    export_.write(path("s.csv"));
    EXPECT_EQ(export_.step(), ExportModel::Idle);

    ASSERT_TRUE(isPlanned());
    export_.confirm();
    export_.write(path("no such folder/s.csv"));
    ASSERT_TRUE(reaches(ExportModel::Failed));
    EXPECT_THAT(export_.failureText().toStdString(),
                testing::StartsWith("The statement couldn't be saved. "));
    export_.dismiss();
    EXPECT_EQ(export_.step(), ExportModel::Idle);

    shown_.model().selection()->setDay({2026, 3, 2});
    shown_.model().prepareExport();
    ASSERT_TRUE(reaches(ExportModel::NothingToExport));
    EXPECT_EQ(export_.summary(), "No changes are recorded for this scope, so there's nothing to export.");
}

TEST_F(ExportModelTest, WhatTakesLongShowsHowFarItIsAndCanBeStopped) {
    ASSERT_TRUE(isPlanned());
    std::promise<void> letGo;
    history_->beforeReading = [waits = letGo.get_future().share()] { waits.wait(); };
    export_.confirm();
    export_.write(path("s.csv"));
    EXPECT_EQ(export_.step(), ExportModel::Writing) << "what is over in a moment shows nothing";
    ASSERT_TRUE(reaches(ExportModel::WritingLong));
    EXPECT_EQ(export_.progressText(), "0 of 1 row written");
    EXPECT_EQ(export_.progress(), 0);
    export_.stop();
    letGo.set_value();
    ASSERT_TRUE(reaches(ExportModel::Idle));
    EXPECT_FALSE(std::filesystem::exists(path("s.csv")));
}

}  // namespace
}  // namespace brindle
