#include "app/EventLoop.h"
#include "app/pages/ListColumns.h"
#include "app/pages/SettingsModel.h"
#include "example/ExampleHistory.h"
#include "support/TempHistory.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// Remembers how long the schedule wants to wait; nothing while it wants nothing.
class RememberedAlarm : public Alarm {
public:
    explicit RememberedAlarm(std::optional<milliseconds>& wait) : wait_(wait) {}
    void callIn(milliseconds time, std::function<void()> /*callback*/) override { wait_ = time; }
    void cancel() override { wait_.reset(); }

private:
    std::optional<milliseconds>& wait_;
};

/// The settings of a program with a history, preferences and a login item in a folder of the test's own.
class SettingsModelTest : public testing::Test {
protected:
    SettingsModelTest() {
        std::ofstream(folder_.path() / "brindle-desktop") << "#!/bin/sh\n";
        fs::permissions(folder_.path() / "brindle-desktop", fs::perms::owner_all);
        options_.dataDirectory = history_.directory();
    }
    ~SettingsModelTest() override { stop(); }

    /// With a program whose own history is the stored one.
    void start() {
        history_.close();
        app_ = std::make_unique<AppModel>(
            AppParts{.options = options_,
                     .preferences = stored(),
                     .settingsFile = SettingsFile(preferencesFile()),
                     .session = {.dataDirectory = options_.dataDirectory,
                                 .clock = {.now = [now = history_.now] { return now; },
                                           .calendar = [calendar = history_.calendar] { return calendar; }}},
                     .alarm = std::make_unique<RememberedAlarm>(wait_),
                     .uptime = [] { return milliseconds(0); },
                     .loginItem = std::make_unique<SystemLoginItem>(
                         entryFile(), folder_.path() / "brindle-desktop",
                         [](const char*) { return std::optional<std::string>("GNOME"); }),
                     .updates =
                         [this](std::function<bool()> isBusy) {
                             return std::make_unique<UpdateController>(
                                 options_.trackingEnabled, SettingValues(),
                                 UpdateServices{.runningVersion = *ProgramVersion::from("1.0"),
                                                .settings = SettingValues(),
                                                .settingsFile = SettingsFile(preferencesFile())},
                                 std::move(isBusy));
                         },
                     .example = [] { return std::make_shared<ExampleHistory>(); }});
        startup_ = std::make_unique<StartupChoices>(*app_);
        model_ = std::make_unique<SettingsModel>(*app_, *startup_);
        app_->start();
        ASSERT_TRUE(runUntil([&] { return app_->mode() != AppMode(PlainMode::starting); }));
    }
    /// What is set is stored by then.
    void stop() {
        model_.reset();
        startup_.reset();
        app_.reset();
    }

    [[nodiscard]] std::string preferencesFile() const { return folder_.path() / "preferences.json"; }
    [[nodiscard]] std::string entryFile() const { return folder_.path() / "autostart/brindle.desktop"; }
    [[nodiscard]] Preferences stored() const {
        return readPreferences(SettingValues(SettingsFile(preferencesFile()).read().values));
    }
    [[nodiscard]] std::vector<std::string> storedEstimates() const {
        return rowsOf(history_.file(), "SELECT bytes FROM estimates");
    }
    void storeEstimate(const std::string& id) {
        history_.store()
            .replaceEstimates({.locationID = {id},
                               .walk =
                                   [](const EstimateGroupSink& /*sink*/) {
                                       return std::vector<EstimateRow>{{{2026, 1, 5}, "a", "b", {500, 1}}};
                                   },
                               .now = [this] { return history_.now; }})
            .get();
    }

    TempFolder folder_;
    TempHistory history_;
    LaunchOptions options_;
    std::optional<milliseconds> wait_;
    std::unique_ptr<AppModel> app_;
    std::unique_ptr<StartupChoices> startup_;
    std::unique_ptr<SettingsModel> model_;
};

TEST_F(SettingsModelTest, EveryChoiceIsStoredAndComesBack) {
    start();
    EXPECT_EQ(model_->appearances().at(model_->appearance()), "Dark");
    EXPECT_EQ(model_->textSizes().at(model_->textSize()), "Standard");
    EXPECT_EQ(model_->checks()->intervals(),
              (QStringList{"5 minutes", "15 minutes", "30 minutes", "60 minutes"}));
    for (const int appearance : {1, 3, -1}) model_->setAppearance(appearance);
    for (const int size : {2, 3, -1}) model_->setTextSize(size);
    for (const int interval : {2, 4, -1}) model_->checks()->setInterval(interval);
    model_->checks()->setChecksAutomatically(false);
    startup_->setOpensQuietly(true);
    startup_->setShowsTrayItem(false);
    stop();
    EXPECT_EQ(stored(), (Preferences{.appearance = AppearanceMode::light,
                                     .textSize = TextSize::extraLarge,
                                     .checkInterval = 30,
                                     .checksPaused = true,
                                     .showsMenuBarItem = false,
                                     .opensQuietlyAtLogin = true}));
    start();
    EXPECT_EQ(model_->appearances().at(model_->appearance()), "Light");
    EXPECT_EQ(model_->textSizes().at(model_->textSize()), "Extra large");
    EXPECT_EQ(model_->checks()->interval(), 2);
    EXPECT_FALSE(model_->checks()->checksAutomatically());
    EXPECT_TRUE(startup_->opensQuietly());
    EXPECT_FALSE(startup_->showsTrayItem());
}

TEST_F(SettingsModelTest, TheScheduleFollowsAtOnce) {
    SettingsFile(preferencesFile()).write("startupSetupCompleted", true);
    history_.include("home");
    history_.check("home", {{"a", 1}});
    start();
    ASSERT_TRUE(wait_.has_value());
    for (const std::size_t interval : {1U, 3U, 0U}) {
        model_->checks()->setInterval(static_cast<int>(interval));
        EXPECT_EQ(wait_, milliseconds(std::chrono::minutes(checkIntervals.at(interval))));
    }
    model_->checks()->setChecksAutomatically(false);
    EXPECT_EQ(wait_, std::nullopt);
    model_->checks()->setChecksAutomatically(true);
    EXPECT_TRUE(wait_.has_value());
}

TEST_F(SettingsModelTest, TurningEstimatesOffRemovesThem) {
    SettingsFile(preferencesFile()).write("showsEstimates", true);
    history_.include("home");
    history_.check("home", {{"a", 1}});
    storeEstimate("home");
    start();
    EXPECT_TRUE(model_->checks()->showsEstimates());
    EXPECT_THAT(storedEstimates(), ElementsAre("500"));
    model_->checks()->setShowsEstimates(false);
    EXPECT_TRUE(runUntil([&] { return storedEstimates().empty(); }));
}

TEST_F(SettingsModelTest, EstimatesTurnedOffWhileTheHistoryIsClosedGoWhenItIsOpened) {
    SettingsFile(preferencesFile()).write("showsEstimates", true);
    history_.include("home");
    history_.check("home", {{"a", 1}});
    storeEstimate("home");
    options_.startInExample = true;
    start();
    model_->checks()->setShowsEstimates(false);
    EXPECT_THAT(storedEstimates(), ElementsAre("500"));
    app_->showOwnHistory();
    EXPECT_TRUE(runUntil([&] { return storedEstimates().empty(); }));
}

TEST_F(SettingsModelTest, IncludedLocationsAreTheUsersOwn) {
    history_.include("home");
    history_.include("usb");
    history_.include("locked");
    history_.check("home", {{"a", 1}}, {.unreadable = {{"x", true}}});
    history_.check("locked", {{"a", 1}}, {.unreadable = {{"x", true}, {"y", true}}});
    history_.store().setStatus({"usb"}, LocationStatus::disconnected).get();
    history_.store().setStatus({"locked"}, LocationStatus::needsAccess).get();
    start();
    CheckSettings& checks = *model_->checks();
    const auto listed = [&](const char* role) { return texts(*checks.locations(), role); };
    EXPECT_THAT(listed("status"), ElementsAre("Full access", "Disconnected", "Needs access"));
    EXPECT_THAT(listed("unreadable"),
                ElementsAre("1 folder couldn't be read", "", "2 folders couldn't be read"));
    EXPECT_THAT(numbers(*checks.locations(), "canShow"), ElementsAre(1, 0, 1));
    EXPECT_EQ(checks.locationsText(), "");

    std::vector<std::string> shown;
    QObject::connect(model_.get(), &SettingsModel::revealRequested,
                     [&](const std::string& path) { shown.push_back(path); });
    for (const int index : {-1, 0, 1, 3}) checks.showInFiles(index);
    EXPECT_THAT(shown, ElementsAre(app_->records().front().path));

    app_->showExample();
    EXPECT_EQ(checks.locations()->rowCount(), 3) << "not the example's";
}

TEST_F(SettingsModelTest, WithoutLocationsTheSettingsSayWhy) {
    start();
    EXPECT_EQ(model_->checks()->locationsText(), "No locations included yet.");
    stop();

    options_.startInExample = true;
    start();
    EXPECT_THAT(model_->checks()->locationsText().toStdString(), StartsWith("Your own locations"));
    stop();

    options_.startInExample = false;
    rowsOf(history_.file(), "PRAGMA user_version = 99");
    start();
    EXPECT_THAT(model_->checks()->locationsText().toStdString(), StartsWith("Your locations can't be shown"));
    model_->checks()->setShowsEstimates(true);
    EXPECT_TRUE(model_->checks()->showsEstimates()) << "the settings work without a history";
}

TEST_F(SettingsModelTest, OpenAtLoginFollowsTheAutostartEntry) {
    start();
    EXPECT_TRUE(startup_->canOpenAtLogin());
    EXPECT_FALSE(startup_->opensAtLogin());
    startup_->setOpensAtLogin(true);
    EXPECT_TRUE(startup_->opensAtLogin());
    EXPECT_TRUE(fs::exists(entryFile()));
    fs::remove(entryFile());
    EXPECT_TRUE(startup_->opensAtLogin());
    startup_->refresh();
    EXPECT_FALSE(startup_->opensAtLogin()) << "others have removed it";

    fs::remove(folder_.path() / "autostart");
    std::ofstream(folder_.path() / "autostart") << "in the way of a folder";
    startup_->setOpensAtLogin(true);
    EXPECT_FALSE(startup_->opensAtLogin());
    EXPECT_THAT(startup_->loginFailure().toStdString(), StartsWith("Open at login couldn't be changed. "));
    fs::remove(folder_.path() / "autostart");
    startup_->setOpensAtLogin(true);
    EXPECT_EQ(startup_->loginFailure(), "");
    startup_->setOpensAtLogin(false);
    EXPECT_FALSE(fs::exists(entryFile()));

    fs::remove(folder_.path() / "brindle-desktop");
    startup_->refresh();
    EXPECT_FALSE(startup_->canOpenAtLogin());
    EXPECT_THAT(startup_->loginText().toStdString(), StartsWith("Brindle's program file can't be found"));
}

TEST_F(SettingsModelTest, WhereNoTrayIsShownTheSettingsSayWhatHolds) {
    start();
    const QString quiet = startup_->quietText();
    EXPECT_EQ(startup_->trayText(), "");
    startup_->setTrayAvailable(false);
    EXPECT_THAT(startup_->trayText().toStdString(), StartsWith("This desktop shows no system tray."));
    EXPECT_THAT(startup_->quietText().toStdString(), StartsWith(quiet.toStdString() + " "));
}

TEST_F(SettingsModelTest, TheStatementsAreWhereTheLastOneWasSaved) {
    const std::string statement = folder_.path() / "Statement.csv";
    std::ofstream(statement) << "a statement";
    const std::string gone = folder_.path() / "gone" / "Later.csv";
    history_.store().recordExport(statement, history_.now).get();
    history_.store().recordExport(gone, history_.now + 1).get();
    start();
    std::vector<std::string> shown;
    QObject::connect(model_.get(), &SettingsModel::revealRequested,
                     [&](const std::string& path) { shown.push_back(path); });
    model_->showHistoryFolder();
    model_->showStatementsFolder();
    ASSERT_TRUE(runUntil([&] { return shown.size() == 2; }));
    EXPECT_THAT(shown, ElementsAre(history_.directory(), folder_.path().string()));
}

TEST_F(SettingsModelTest, WhyThereAreNoUpdatesIsSaid) {
    start();
    EXPECT_FALSE(model_->updates()->isAvailable());
    EXPECT_EQ(model_->updates()->unavailableText(), "Automatic updates aren't set up in this build.");
    EXPECT_FALSE(model_->updates()->checksAutomatically() || model_->updates()->canCheckNow());
    stop();
    options_.trackingEnabled = false;
    options_.startInExample = true;
    start();
    EXPECT_EQ(model_->updates()->unavailableText(),
              "Updates are off in development builds, so they never replace themselves.");
}

}  // namespace
}  // namespace brindle
