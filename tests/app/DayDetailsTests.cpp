#include "app/DayDetails.h"
#include "app/EventLoop.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <latch>
#include <stdexcept>

namespace brindle {
namespace {

using testing::ElementsAre;

template <class Value>
std::future<Value> ready(Value value) {
    std::promise<Value> promise;
    promise.set_value(std::move(value));
    return promise.get_future();
}

/// Each day has one change, named by the day. The first read waits to be let go.
class SlowSource : public HistorySource {
public:
    std::future<HistorySnapshot> snapshot() override { return ready(HistorySnapshot{}); }
    std::future<std::vector<FileChange>> dayChanges(LocalDay day, LocationScope) override {
        if (reads++ == 0) letGo.wait();
        if (day == damaged) throw std::runtime_error("damaged");
        return ready(std::vector<FileChange>{{.name = day.text(), .day = day}});
    }
    std::future<std::vector<FolderSummary>> periodContributors(LocalDay first, LocalDay last, LocationScope,
                                                               std::size_t) override {
        return ready(std::vector<FolderSummary>{{{{first.text()}, {last.text()}}, {}}});
    }
    std::future<std::vector<FileChange>> periodEstimates(LocalDay, LocalDay, LocationScope) override {
        return ready(std::vector<FileChange>{{.folder = {"a", "b", "c"}, .byteDelta = 5}});
    }
    std::future<std::vector<FileChange>> allEstimates(LocationScope) override {
        return ready(std::vector<FileChange>{});
    }
    std::future<std::vector<FileChange>> periodChanges(LocalDay first, LocalDay last,
                                                       LocationScope) override {
        return ready(std::vector<FileChange>{{.name = first.text()}, {.name = last.text()}});
    }
    std::future<std::vector<VolumeReading>> capacitySamples(std::string, LocalDay, LocalDay) override {
        return ready(std::vector<VolumeReading>{});
    }
    void streamChanges(LocalDay, LocalDay, const LocationScope&, ChangeSource, const ChangeSink&) override {}

    std::latch letGo{1};
    std::atomic<int> reads = 0;
    LocalDay damaged{2026, 1, 1};
};

DetailsRequest dayRequest(int day) {
    return {.first = {2026, 3, day}, .last = {2026, 3, day}, .contributorsFirst = {2026, 2, day}};
}

class DayDetailsTest : public testing::Test {
protected:
    DayDetailsTest() {
        QObject::connect(&details_, &DayDetails::loaded,
                         [this](const std::shared_ptr<const Details>& loaded) {
                             loaded_.push_back(loaded->changes.front().name);
                             last_ = loaded;
                         });
        QObject::connect(&details_, &DayDetails::failed,
                         [this](const std::exception& error) { loaded_.emplace_back(error.what()); });
    }

    std::shared_ptr<SlowSource> source_ = std::make_shared<SlowSource>();
    std::vector<std::string> loaded_;
    std::shared_ptr<const Details> last_;
    DayDetails details_;
};

TEST_F(DayDetailsTest, OnlyTheLastRequestIsAnsweredAndNoQueueOfReadsGrows) {
    for (int day = 1; day <= 20; ++day) details_.load(source_, dayRequest(day));
    source_->letGo.count_down();
    ASSERT_TRUE(runUntil([&] { return !loaded_.empty(); }));
    EXPECT_THAT(loaded_, ElementsAre("2026-03-20"));
    EXPECT_EQ(source_->reads, 2);
    EXPECT_TRUE(last_->estimates.empty());
    EXPECT_EQ(last_->contributors.front().ref.locationID.rawValue, "2026-02-20");
}

TEST_F(DayDetailsTest, WhatIsForgottenIsNotToldAndAFailureIs) {
    details_.load(source_, dayRequest(1));
    details_.forget();
    details_.load(source_, {.first = source_->damaged, .last = source_->damaged});
    source_->letGo.count_down();
    ASSERT_TRUE(runUntil([&] { return !loaded_.empty(); }));
    DetailsRequest period = dayRequest(4);
    period.first = {2026, 3, 2};
    period.withEstimates = true;
    details_.load(source_, period);
    ASSERT_TRUE(runUntil([&] { return loaded_.size() == 2; }));
    EXPECT_THAT(loaded_, ElementsAre("damaged", "2026-03-02"));
    EXPECT_EQ(last_->estimateFolders.front().ref.components, (FolderPath{"a", "b"}));
}

}  // namespace
}  // namespace brindle
