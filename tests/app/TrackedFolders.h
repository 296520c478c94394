#pragma once

#include "app/pages/ShownHistory.h"
#include "checks/LocationChanges.h"
#include "support/HookedTree.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <semaphore>
#include <string>
#include <vector>

namespace brindle {

/// The program on real folders. "home" is included and was checked; a test may hold a walk where it ends.
class TrackedFolders : public testing::Test {
protected:
    TrackedFolders() {
        shown_.setTrees([this] {
            return std::make_unique<HookedTree>([this](const std::string& root) {
                if (root != held_) return;
                isHeld_ = true;
                goesOn_.acquire();
            });
        });
        write("home/a", 1000);
        HistoryStore store(data());
        LocationRecord record = proposeLocation(path("home"), {}, systemNow() - 60).record;
        record.id = {"home"};
        store.insert(record).get();
        RunLockSource locks(data());
        ScanCoordinator coordinator(
            store, locks, [](const CoordinatorEvent&) {}, false);
        coordinator.run({.locations = {{"home"}}}).wait();

        QObject::connect(&tracking(), &Tracking::changed, [this] { ++changes_; });
        QObject::connect(&tracking(), &Tracking::failed,
                         [this](const QString& sentence) { failures_.push_back(sentence.toStdString()); });
        QObject::connect(&model().session(), &HistorySession::runFinished,
                         [this](const CheckRunSummary& run) { runs_.push_back(run); });
        QObject::connect(&model(), &AppModel::readyToQuit, [this] { isReadyToQuit_ = true; });
    }
    ~TrackedFolders() override { EXPECT_TRUE(quit()); }

    /// The program begins to quit, then the walk that is held goes on.
    [[nodiscard]] bool quit() {
        model().shutDown();
        goesOn_.release(8);
        const bool isOver = runUntil([&] { return isReadyToQuit_; });
        shown_.endTracking();
        return isOver;
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
    [[nodiscard]] const std::string& data() { return model().options().dataDirectory; }

    void write(const std::string& name, std::size_t bytes) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name)) << std::string(bytes, 'x');
    }

    AppModel& model() { return shown_.model(); }
    Tracking& tracking() { return shown_.tracking(); }
    /// Opens the history. With checks, the one that tracking begins with is over.
    [[nodiscard]] bool open(bool withChecks) {
        model().settings()->setChecksPaused(!withChecks);
        return shown_.open(data()) && model().mode() == AppMode(PlainMode::tracking) &&
               (!withChecks || runUntil([&] { return runs_.size() == 1 && !model().isChecking(); }));
    }
    /// Begins a check of everything, whose walk of the folder waits at its end. For the folder to go on:
    /// letGo().
    [[nodiscard]] bool holdCheckOf(const std::string& name) {
        held_ = path(name);
        isHeld_ = false;
        model().checkNow();
        return runUntil([&] { return isHeld_.load(); });
    }
    void letGo() { goesOn_.release(); }

    LocationRecord record(const std::string& name) {
        return proposeLocation(path(name), {}, systemNow()).record;
    }
    /// As the model knows it; nothing when it does not.
    [[nodiscard]] std::optional<LocationRecord> known(const std::string& name) {
        for (const LocationRecord& record : model().records())
            if (record.path == path(name)) return record;
        return {};
    }
    /// Whether all changes that were asked for come to be shown.
    [[nodiscard]] bool changesAreMade() {
        return runUntil([&] { return !tracking().isChanging(); });
    }

    TempFolder folder_;
    ShownHistory shown_{systemNow()};
    std::string held_;  // the root of the walk that waits
    std::atomic<bool> isHeld_ = false;
    std::counting_semaphore<16> goesOn_{0};
    bool isReadyToQuit_ = false;
    int changes_ = 0;
    std::vector<std::string> failures_;
    std::vector<CheckRunSummary> runs_;
};

}  // namespace brindle
