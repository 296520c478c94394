#include "app/EventLoop.h"
#include "app/RecordingLoginItem.h"
#include "app/pages/ListColumns.h"
#include "app/pages/SetupModel.h"
#include "store/StoredHistory.h"
#include "support/HookedTree.h"
#include "support/TempHistory.h"
#include "support/TestMounts.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <semaphore>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// An alarm that rings when the test says so.
class HandAlarm : public Alarm {
public:
    explicit HandAlarm(std::function<void()>& ring) : ring_(ring) {}
    void callIn(std::chrono::milliseconds, std::function<void()> callback) override {
        ring_ = std::move(callback);
    }
    void cancel() override { ring_ = nullptr; }

private:
    std::function<void()>& ring_;
};

/// A user with a home of real folders, whose program can be started again and again on what it stored.
class FirstRun : public testing::Test {
protected:
    FirstRun() {
        write("Documents/letter", 2000);
        write("Music/song", 30'000);
    }
    ~FirstRun() override { quit(); }

    [[nodiscard]] std::string place(const std::string& name) const {
        return (folder_.path() / name).string();
    }
    [[nodiscard]] std::string home() const { return place("ann"); }
    [[nodiscard]] std::string data() const { return place("data"); }
    void write(const std::string& name, std::size_t bytes) const {
        const fs::path file = fs::path(home()) / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file) << std::string(bytes, 'x');
    }

    /// Starts the program, and ends the one that runs.
    void start() {
        quit();
        const SettingsFile file(place("preferences.json"));
        const SettingValues stored(file.read().values);
        LaunchOptions options;
        options.dataDirectory = data();
        model_ = std::make_unique<AppModel>(AppParts{
            .options = options,
            .preferences = readPreferences(stored),
            .settingsFile = file,
            .session = {.dataDirectory = data(),
                        .clock = {.calendar = [calendar = Calendar("en_US", "UTC")] { return calendar; }},
                        .trees =
                            [this] {
                                return std::make_unique<HookedTree>(
                                    [this](const std::string& root) { atEndOfWalk_(root); });
                            }},
            .alarm = std::make_unique<HandAlarm>(ring_),
            .uptime = [this] { return uptime_; },
            .loginItem = std::make_unique<RecordingLoginItem>(),
            .updates =
                [file](std::function<bool()> isBusy) {
                    return std::make_unique<UpdateController>(
                        false, SettingValues(),
                        UpdateServices{.runningVersion = *ProgramVersion::from("1.0"),
                                       .settings = SettingValues(),
                                       .settingsFile = file},
                        std::move(isBusy));
                },
            .example = [this] { return std::make_shared<StoredHistory>(example_.sharedStore()); }});
        notes_.clear();
        QObject::connect(model_.get(), &AppModel::noted,
                         [this](const QString& sentence) { notes_.push_back(sentence.toStdString()); });
        tracking_ = std::make_unique<Tracking>(*model_);
        setup_ = std::make_unique<SetupModel>(*model_, *tracking_, home());
        model_->start();
        ASSERT_TRUE(runUntil([this] { return model_->mode() != AppMode(PlainMode::starting); }));
    }

    void quit() {
        if (!model_) return;
        bool isReady = false;
        QObject::connect(model_.get(), &AppModel::readyToQuit, [&] { isReady = true; });
        model_->shutDown();
        EXPECT_TRUE(runUntil([&] { return isReady; }));
        setup_.reset();
        tracking_.reset();
        model_.reset();
    }

    [[nodiscard]] SetupModel& setup() { return *setup_; }
    [[nodiscard]] LocationChoice& choice() { return *setup_->locations(); }
    [[nodiscard]] FirstCheckModel& check() { return *setup_->check(); }
    [[nodiscard]] bool reaches(PlainMode mode) {
        return runUntil([&] { return model_->mode() == AppMode(mode); });
    }
    [[nodiscard]] bool reaches(FirstCheckModel::State state) {
        return runUntil([&] { return check().state() == state; });
    }
    [[nodiscard]] std::vector<std::string> chosen() { return texts(*choice().chosen(), "name"); }
    [[nodiscard]] std::vector<std::string> suggested() { return texts(*choice().suggestions(), "detail"); }

    /// Includes a folder as the user chooses it. False when that is refused.
    [[nodiscard]] bool include(const std::string& path) {
        const auto before = chosen().size();
        choice().include(path);
        return runUntil([&] {
                   return chosen().size() > before || choice().message() != "" || choice().question() != "";
               }) &&
               chosen().size() > before;
    }
    /// From the welcome to the start-up choices, with these folders.
    void chooseFolders(const std::vector<std::string>& paths) {
        setup().goOn();
        for (const std::string& path : paths) EXPECT_TRUE(include(path)) << choice().message().toStdString();
        setup().goOn();
    }
    [[nodiscard]] std::vector<std::int64_t> trackedBytes() {
        std::vector<std::int64_t> bytes;
        for (const LocationRecord& record : model_->records()) bytes.push_back(record.trackedBytes);
        return bytes;
    }

    TempFolder folder_;
    TempHistory example_;
    std::function<void(const std::string&)> atEndOfWalk_ = [](const std::string&) {};
    std::function<void()> ring_;
    Schedule::Moment uptime_{0};
    std::vector<std::string> notes_;
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<Tracking> tracking_;
    std::unique_ptr<SetupModel> setup_;
};

/// Keeps walks from their end until it is let go.
class Gate {
public:
    void hold() {
        isReached_ = true;
        gate_.acquire();
    }
    void open() { gate_.release(); }
    [[nodiscard]] bool isReached() const { return isReached_; }

private:
    std::atomic<bool> isReached_ = false;
    std::counting_semaphore<> gate_{0};
};

TEST_F(FirstRun, LeadsFromTheWelcomeToTheOverview) {
    start();
    EXPECT_EQ(model_->mode(), AppMode(PlainMode::onboarding));
    EXPECT_EQ(setup().phase(), SetupModel::Welcome);
    EXPECT_EQ(setup().stepText(), "Step 1 of 4");
    EXPECT_FALSE(setup().canGoBack());

    setup().goOn();
    EXPECT_EQ(setup().phase(), SetupModel::Locations);
    EXPECT_FALSE(setup().canGoOn()) << "nothing is included";
    setup().goOn();
    EXPECT_EQ(setup().phase(), SetupModel::Locations);
    ASSERT_EQ(suggested().front(), home() + " · a good place to begin");
    choice().includeSuggestion(0);
    ASSERT_TRUE(runUntil([&] { return choice().hasChosen(); }));
    EXPECT_THAT(suggested(), Not(Contains(StartsWith(home()))));

    setup().goOn();
    EXPECT_EQ(setup().stepText(), "Step 3 of 4");
    setup().setShowsEstimates(true);
    model_->selection()->setDestination(Destination::trends);
    setup().goOn();
    EXPECT_TRUE(model_->settings()->startupSetupCompleted());
    EXPECT_TRUE(check().isRunning()) << "who comes from the last choice waits for nothing else";
    ASSERT_TRUE(reaches(PlainMode::tracking));
    EXPECT_FALSE(model_->isSetupShown());
    EXPECT_EQ(model_->selection()->destination(), Destination::overview);
    EXPECT_THAT(trackedBytes(), ElementsAre(32'000));
    EXPECT_TRUE(model_->records().front().estimatedAt.has_value());
    EXPECT_THAT(notes_, IsEmpty());
}

TEST_F(FirstRun, IsTakenUpAgainWhereItWasLeft) {
    start();
    setup().goOn();
    start();
    EXPECT_EQ(setup().phase(), SetupModel::Welcome) << "nothing was stored";
    setup().goOn();
    ASSERT_TRUE(include(place("ann/Music")));

    start();
    EXPECT_EQ(setup().phase(), SetupModel::Startup) << "what is to be included is known";
    EXPECT_THAT(chosen(), ElementsAre("Music"));
    setup().goBack();
    EXPECT_EQ(setup().phase(), SetupModel::Locations);
    model_->settings()->setChecksPaused(true);
    model_->settings()->setStartupSetupCompleted(true);

    start();
    EXPECT_EQ(model_->mode(), AppMode(PlainMode::setup));
    EXPECT_EQ(setup().phase(), SetupModel::FirstCheck);
    EXPECT_EQ(check().state(), FirstCheckModel::Ready) << "no check begins by itself while they are paused";
    model_->settings()->setChecksPaused(false);

    start();
    ASSERT_TRUE(reaches(PlainMode::tracking));
    EXPECT_THAT(trackedBytes(), ElementsAre(30'000));
}

TEST_F(FirstRun, WhatOverlapsIsExplainedBeforeItIsStored) {
    start();
    setup().goOn();
    ASSERT_TRUE(include(place("ann/Music")));
    EXPECT_FALSE(include(place("ann/Music")));
    EXPECT_EQ(choice().message(), "“Music” is already included.");
    fs::create_directory(place("ann/Music/Old"));
    EXPECT_FALSE(include(place("ann/Music/Old")));
    EXPECT_EQ(choice().message(), "“Old” is already checked as part of “Music”.");

    choice().includeSuggestion(0);
    ASSERT_TRUE(runUntil([&] { return choice().question() != ""; }));
    EXPECT_EQ(choice().message(), "") << "an old message is about something else";
    EXPECT_THAT(choice().question().toStdString(), HasSubstr("“Music” keeps being checked on its own"));
    EXPECT_EQ(choice().questionTitle(), "Include “ann”?");
    choice().answer(false);
    EXPECT_EQ(choice().question(), "");
    choice().includeSuggestion(0);
    ASSERT_TRUE(runUntil([&] { return choice().question() != ""; }));
    EXPECT_THAT(chosen(), ElementsAre("Music"));
    choice().answer(true);
    ASSERT_TRUE(runUntil([&] { return chosen().size() == 2; }));
    EXPECT_THAT(suggested(), Not(Contains(StartsWith(home()))));
}

TEST_F(FirstRun, WhatCannotBeIncludedIsRefusedInWords) {
    start();
    setup().goOn();
    const std::pair<std::string, std::string> cases[] = {
        {place("nowhere"), "The folder “" + place("nowhere") + "” isn't there."},
        {place("ann/Music/song"), "“" + place("ann/Music/song") + "” isn't a folder."},
        {"/proc", "“/proc” belongs to the system and holds no stored files."},
    };
    for (const auto& [path, sentence] : cases) {
        EXPECT_FALSE(include(path));
        EXPECT_EQ(choice().message().toStdString(), sentence);
    }
    EXPECT_THAT(model_->records(), IsEmpty());
}

TEST_F(FirstRun, WhatWasIncludedIsTakenOutAgainUntilItHasBeenChecked) {
    start();
    setup().goOn();
    ASSERT_TRUE(include(home()));
    ASSERT_TRUE(setup().canGoOn());
    choice().takeOut(0);
    ASSERT_TRUE(runUntil([&] { return !choice().hasChosen(); }));
    EXPECT_FALSE(setup().canGoOn());
    EXPECT_THAT(model_->records(), IsEmpty()) << "it is as if it had never been included";
    EXPECT_THAT(suggested(), Contains(StartsWith(home())));

    ASSERT_TRUE(include(home()));
    setup().goOn();
    setup().goOn();
    ASSERT_TRUE(reaches(PlainMode::tracking));
    EXPECT_THAT(numbers(*choice().chosen(), "canTakeOut"), ElementsAre(0));
    EXPECT_THAT(texts(*choice().chosen(), "detail"), ElementsAre(home() + " · already checked"));
    choice().takeOut(0);
    EXPECT_FALSE(tracking_->isChanging());
}

TEST_F(FirstRun, AStoppedFirstCheckCanBeStartedAgain) {
    Gate gate;
    atEndOfWalk_ = [&](const std::string&) { gate.hold(); };
    start();
    chooseFolders({home()});
    setup().goOn();
    ASSERT_TRUE(runUntil([&] { return gate.isReached() && model_->isChecking(); }));
    EXPECT_EQ(check().activity(), "Checking your files… ann");
    EXPECT_FALSE(setup().canGoBack());
    check().stop();
    gate.open();
    ASSERT_TRUE(reaches(FirstCheckModel::Stopped));
    EXPECT_EQ(setup().title(), "The first check was stopped");
    EXPECT_EQ(setup().explanation(), "Nothing was recorded. It can be started again at any time.");
    EXPECT_THAT(check().obstacles(), IsEmpty());
    EXPECT_EQ(setup().goOnTitle(), "Check again");
    EXPECT_TRUE(setup().canGoBack());
    EXPECT_FALSE(setup().canShowPages());
    EXPECT_EQ(model_->mode(), AppMode(PlainMode::setup));

    atEndOfWalk_ = [](const std::string&) {};
    setup().goOn();
    ASSERT_TRUE(reaches(PlainMode::tracking));
}

TEST_F(FirstRun, WhatWasCheckedBeforeTheStopIsThereToBeSeen) {
    Gate gate;
    atEndOfWalk_ = [&](const std::string& root) {
        if (root.ends_with("Music")) gate.hold();
    };
    start();
    chooseFolders({place("ann/Documents"), place("ann/Music")});
    setup().goOn();
    ASSERT_TRUE(runUntil([&] { return gate.isReached(); }));
    check().stop();
    gate.open();
    ASSERT_TRUE(reaches(FirstCheckModel::Stopped));
    ASSERT_TRUE(setup().canShowPages());
    setup().showPages();
    EXPECT_EQ(model_->mode(), AppMode(PlainMode::tracking));
    EXPECT_THAT(trackedBytes(), ElementsAre(2000, 0));
}

TEST_F(FirstRun, TheExampleIsOnlyADigression) {
    Gate gate;
    atEndOfWalk_ = [&](const std::string&) { gate.hold(); };
    start();
    setup().goOn();
    setup().showExample();
    EXPECT_FALSE(model_->isSetupShown());
    model_->showSetup();
    ASSERT_TRUE(reaches(PlainMode::onboarding));
    EXPECT_EQ(setup().phase(), SetupModel::Locations);
    ASSERT_TRUE(include(home()));
    setup().goOn();
    setup().goOn();
    ASSERT_TRUE(runUntil([&] { return gate.isReached(); }));

    setup().showExample();
    model_->showSetup();
    ASSERT_TRUE(reaches(PlainMode::setup));
    EXPECT_TRUE(check().isRunning()) << "the first check went on behind the example";
    setup().showExample();
    gate.open();
    ASSERT_TRUE(runUntil([&] { return !model_->isChecking() && check().hasBaseline(); }));
    EXPECT_EQ(model_->mode(), AppMode(PlainMode::example)) << "nobody is taken away from what they look at";
    model_->showOwnHistory();
    ASSERT_TRUE(reaches(PlainMode::tracking));
    EXPECT_FALSE(model_->isSetupShown());
}

TEST_F(FirstRun, ALocationThatCannotBeCheckedKeepsNoOtherFromIt) {
    start();
    chooseFolders({place("ann/Documents"), place("ann/Music")});
    fs::rename(place("ann/Documents"), place("gone"));
    fs::remove_all(place("gone"));
    setup().goOn();
    ASSERT_TRUE(reaches(PlainMode::tracking));
    EXPECT_THAT(notes_, ElementsAre(HasSubstr("“Documents” couldn't be checked: ")));
}

TEST_F(FirstRun, WhenNothingCanBeCheckedTheReasonIsTold) {
    start();
    chooseFolders({place("ann/Music")});
    fs::rename(place("ann"), place("away"));
    setup().goOn();
    ASSERT_TRUE(reaches(FirstCheckModel::Failed));
    EXPECT_EQ(model_->mode(), AppMode(PlainMode::setup));
    ASSERT_THAT(check().obstacles(), testing::SizeIs(1));
    EXPECT_THAT(check().obstacles().front().toStdString(),
                HasSubstr("“Music” couldn't be checked: " + place("ann/Music") + " isn't there"));
    fs::rename(place("away"), place("ann"));
    setup().goOn();
    ASSERT_TRUE(reaches(PlainMode::tracking));
}

TEST_F(FirstRun, AFullDiskIsToldAndTheCheckCanBeTriedAgain) {
    SKIP_UNLESS_MOUNTS_WORK();
    fs::create_directory(data());
    const TestMount disk = TestMount::memory(data(), "size=600k");
    for (int i = 0; i < 3000; ++i) write("Many/" + std::string(200, 'a') + std::to_string(i), 1);
    start();
    chooseFolders({place("ann/Many")});
    setup().goOn();
    ASSERT_TRUE(reaches(FirstCheckModel::Failed));
    EXPECT_THAT(check().obstacles().front().toStdString(), HasSubstr("There is no room left on the disk"));
    fs::remove_all(place("ann/Many"));
    write("Many/one", 5);
    setup().goOn();
    ASSERT_TRUE(reaches(PlainMode::tracking));
}

TEST_F(FirstRun, WhoTracksAlreadyOpensTheScreensWithoutLosingAnything) {
    start();
    chooseFolders({place("ann/Music")});
    setup().goOn();
    ASSERT_TRUE(reaches(PlainMode::tracking));
    ASSERT_TRUE(runUntil([&] { return !model_->isChecking(); }));
    model_->selection()->setDestination(Destination::history);

    model_->showSetup();
    EXPECT_TRUE(model_->isSetupShown());
    EXPECT_EQ(setup().phase(), SetupModel::Welcome);
    EXPECT_EQ(setup().stepText(), "Step 1 of 3");
    int runs = 0;
    QObject::connect(&model_->session(), &HistorySession::runFinished, [&] { ++runs; });
    uptime_ += std::chrono::minutes(5);
    ASSERT_TRUE(ring_ != nullptr);
    ring_();
    ASSERT_TRUE(runUntil([&] { return runs == 1; })) << "checks go on behind the screens";
    setup().showPages();
    EXPECT_FALSE(model_->isSetupShown());
    EXPECT_EQ(model_->selection()->destination(), Destination::history);

    model_->showSetup();
    setup().goOn();
    ASSERT_TRUE(include(place("ann/Documents")));
    setup().goOn();
    EXPECT_EQ(setup().goOnTitle(), "Done");
    setup().goOn();
    EXPECT_FALSE(model_->isSetupShown());
    EXPECT_TRUE(runUntil([&] { return trackedBytes() == std::vector<std::int64_t>{30'000, 2000}; }));
}

TEST(Duration, ReadsInItsTwoLargestUnits) {
    EXPECT_EQ(durationText(0), "0 s");
    EXPECT_EQ(durationText(59), "59 s");
    EXPECT_EQ(durationText(61), "1 min 1 s");
    EXPECT_EQ(durationText(3 * 3600 + 125), "3 h 2 min");
}

}  // namespace
}  // namespace brindle
