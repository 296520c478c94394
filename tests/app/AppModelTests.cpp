#include "app/AppModel.h"
#include "app/EventLoop.h"
#include "app/RecordingLoginItem.h"
#include "scan/LocationAccess.h"
#include "store/StoredHistory.h"
#include "support/TempHistory.h"

#include <QMetaProperty>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brindle {
namespace {

using testing::HasSubstr;

/// An alarm that rings when the test says so.
class HandAlarm : public Alarm {
public:
    void callIn(std::chrono::milliseconds time, std::function<void()> callback) override {
        *wait = time;
        *callback_ = std::move(callback);
    }
    void cancel() override { *callback_ = nullptr; }

    std::shared_ptr<std::chrono::milliseconds> wait = std::make_shared<std::chrono::milliseconds>();
    std::shared_ptr<std::function<void()>> callback_ = std::make_shared<std::function<void()>>();
};

/// A program on a real folder and a real history, at a time that the test sets.
class AppModelTest : public testing::Test {
protected:
    AppModelTest() { write("a", 1000); }

    [[nodiscard]] std::string data() const { return (folder_.path() / "data").string(); }
    [[nodiscard]] std::string files() const { return (folder_.path() / "files").string(); }

    void write(const std::string& name, std::size_t bytes) const {
        std::filesystem::create_directories(files());
        std::ofstream(files() + "/" + name) << std::string(bytes, 'x');
    }

    /// Stores the folder as a location, as the setup screens do.
    void include() const {
        LocationRecord record = makeCandidate(files(), {}, systemNow()).record;
        record.id = {"files"};
        HistoryStore(data()).insert(std::move(record)).get();
    }

    AppModel& model() {
        if (model_) return *model_;
        auto alarm = std::make_unique<HandAlarm>();
        ring_ = alarm->callback_;
        auto login = std::make_unique<RecordingLoginItem>();
        login_ = login.get();
        options_.dataDirectory = data();
        const Calendar calendar("en_US", "UTC");
        const auto now = [this] { return now_; };
        model_ = std::make_unique<AppModel>(
            AppParts{.options = options_,
                     .preferences = preferences_,
                     .settingsFile = SettingsFile((folder_.path() / "preferences.json").string()),
                     .session = {.dataDirectory = data(),
                                 .clock = {.now = now, .calendar = [calendar] { return calendar; }}},
                     .alarm = std::move(alarm),
                     .uptime = [this] { return std::chrono::milliseconds(static_cast<long>(now_ * 1000)); },
                     .loginItem = std::move(login),
                     .updates =
                         [this](std::function<bool()> isBusy) {
                             return std::make_unique<UpdateController>(
                                 false, SettingValues(),
                                 UpdateServices{.runningVersion = *ProgramVersion::from("1.0"),
                                                .settings = SettingValues(),
                                                .settingsFile = SettingsFile(data() + ".json")},
                                 std::move(isBusy));
                         },
                     .example =
                         [this] {
                             example_ = std::make_shared<TempHistory>();
                             example_->include("example.home");
                             return std::make_shared<StoredHistory>(example_->sharedStore());
                         }});
        QObject::connect(model_.get(), &AppModel::noted,
                         [this](const QString& sentence) { notes_.push_back(sentence.toStdString()); });
        QObject::connect(model_.get(), &AppModel::readyToQuit, [this] { isReadyToQuit_ = true; });
        QObject::connect(&model_->session(), &HistorySession::runFinished, [this] {
            ++runs_;
            areFiguresDue_ = true;
        });
        QObject::connect(&model_->session(), &HistorySession::figuresLoaded,
                         [this] { areFiguresDue_ = false; });
        return *model_;
    }

    [[nodiscard]] bool reaches(PlainMode mode) {
        return runUntil([&] { return model().mode() == AppMode(mode); });
    }
    [[nodiscard]] bool runsBecome(int runs) {
        return runUntil([&] { return runs_ >= runs && !areFiguresDue_; });
    }
    /// Today's changes, as the lists have them.
    [[nodiscard]] std::int64_t listedBytes() {
        std::int64_t sum = 0;
        for (const FileChange& change : model().details().changes) sum += change.byteDelta;
        return sum;
    }

    void quit() {
        model().shutDown();
        EXPECT_TRUE(runUntil([&] { return isReadyToQuit_; }));
    }

    TempFolder folder_;
    LaunchOptions options_;
    Preferences preferences_{.startupSetupCompleted = true};
    UnixTime now_ = systemNow();
    std::shared_ptr<TempHistory> example_;
    std::shared_ptr<std::function<void()>> ring_;
    RecordingLoginItem* login_ = nullptr;
    std::vector<std::string> notes_;
    bool isReadyToQuit_ = false;
    int runs_ = 0;
    bool areFiguresDue_ = false;  // of the last run
    std::unique_ptr<AppModel> model_;
};

TEST_F(AppModelTest, SetupLeadsOnToTrackingOnceThereIsABaseline) {
    preferences_.startupSetupCompleted = false;
    include();
    model().start();
    ASSERT_TRUE(reaches(PlainMode::onboarding));
    model().settings()->setStartupSetupCompleted(true);
    model().route();
    EXPECT_EQ(model().mode(), AppMode(PlainMode::setup));
    model().checkNow();
    ASSERT_TRUE(runsBecome(1));
    ASSERT_TRUE(runUntil([&] { return model().records().front().baselineAt.has_value(); }));
    model().route();
    EXPECT_EQ(model().mode(), AppMode(PlainMode::tracking));
    QCoreApplication::processEvents();
    EXPECT_EQ(runs_, 1) << "the run that set the baselines is the first check of tracking";
    quit();
}

TEST_F(AppModelTest, WhileTrackingEveryTickChecksAndWhatItFindsIsShown) {
    include();
    {
        HistorySession session({.dataDirectory = data()});
        bool isChecked = false;
        bool isDone = false;
        QObject::connect(&session, &HistorySession::opened, [&] { session.checkAll(); });
        QObject::connect(&session, &HistorySession::runFinished, [&] { isChecked = true; });
        QObject::connect(&session, &HistorySession::figuresLoaded, [&] { isDone = isChecked; });
        session.open(false);
        ASSERT_TRUE(runUntil([&] { return isDone; }));
    }
    model().start();
    ASSERT_TRUE(reaches(PlainMode::tracking));
    ASSERT_TRUE(runsBecome(1));
    EXPECT_EQ(model().ownToday().totals, ChangeTotals());

    write("b", 700);
    ASSERT_TRUE(runUntil([&] { return static_cast<bool>(*ring_); }));
    now_ += 300;
    (*ring_)();
    ASSERT_TRUE(runsBecome(2));
    ASSERT_TRUE(runUntil([&] { return listedBytes() == 700; }));
    EXPECT_EQ(model().ownToday().totals, (ChangeTotals{700, 0, 1}));
    EXPECT_EQ(model().history().trackedTotals.at({"files"}).rbegin()->second, 1700);
    ASSERT_EQ(model().contributors()->rowCount(), 1);
    EXPECT_EQ(model().contributors()->rows().front().added, "+700 bytes");
    EXPECT_EQ(model().contributors()->rows().front().place, "files");

    // Another selection has other lists, and a revision of its own.
    const int revision = model().dayChangesRevision();
    model().selection()->moveDay(-1);
    ASSERT_TRUE(runUntil([&] { return model().dayChangesRevision() > revision; }));
    EXPECT_EQ(listedBytes(), 0);
    model().selection()->setDay(model().selection()->today());

    // The next day: who looked at today looks at the new one.
    now_ += 86'400;
    model().dayOrZoneChanged();
    ASSERT_TRUE(runUntil([&] { return model().history().today == model().selection()->today(); }));
    EXPECT_EQ(model().selection()->day(), Calendar("en_US", "UTC").day(now_));
    EXPECT_FALSE(model().ownToday().isChecked);
    quit();
    EXPECT_EQ(runs_, 2);
}

TEST_F(AppModelTest, EveryPropertyIsOfATypeThatViewsCanTakeAndTellsWhenItChanges) {
    for (QObject* object : {static_cast<QObject*>(&model()), static_cast<QObject*>(model().selection()),
                            static_cast<QObject*>(model().settings())}) {
        const QMetaObject* type = object->metaObject();
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            EXPECT_TRUE(property.read(object).isValid()) << type->className() << " " << property.name();
            EXPECT_TRUE(property.hasNotifySignal() || property.isConstant())
                << type->className() << " " << property.name();
        }
    }
}

TEST_F(AppModelTest, TheExampleIsShownInItsPlaceAndNeverMixed) {
    include();
    options_.startInExample = true;
    model().start();
    ASSERT_TRUE(runUntil([&] { return !model().history().locations.empty(); }));
    EXPECT_EQ(model().mode(), AppMode(PlainMode::example));
    EXPECT_EQ(model().history().locations.front().id.rawValue, "example.home");
    EXPECT_FALSE(model().session().isOpen());
    EXPECT_TRUE(model().records().empty());

    model().showOwnHistory();
    ASSERT_TRUE(reaches(PlainMode::setup));
    EXPECT_EQ(model().history().locations.front().id.rawValue, "files");
    model().showExample();
    ASSERT_TRUE(runUntil([&] { return model().history().locations.front().id.rawValue == "example.home"; }));
    EXPECT_EQ(model().records().front().id.rawValue, "files");
    EXPECT_EQ(runs_, 0);
    quit();
}

TEST_F(AppModelTest, ATestHostNeverOpensTheUsersHistory) {
    options_.trackingEnabled = false;
    options_.startInExample = true;
    model().start();
    model().showOwnHistory();
    model().retryOpening();
    ASSERT_TRUE(runUntil([&] { return !model().history().locations.empty(); }));
    EXPECT_EQ(model().mode(), AppMode(PlainMode::example));
    EXPECT_FALSE(std::filesystem::exists(data()));
    quit();
}

TEST_F(AppModelTest, AHistoryThatCannotBeOpenedLeavesTheExampleAndAnotherTry) {
    include();
    std::filesystem::rename(data(), data() + " moved");
    std::ofstream(data()) << "a file in the way";
    model().start();
    ASSERT_TRUE(runUntil([&] { return std::holds_alternative<ModeUnavailable>(model().mode()); }));
    EXPECT_THAT(std::get<ModeUnavailable>(model().mode()).message, HasSubstr("."));
    model().showExample();
    ASSERT_TRUE(runUntil([&] { return !model().history().locations.empty(); }));

    std::filesystem::remove(data());
    std::filesystem::rename(data() + " moved", data());
    model().showOwnHistory();
    ASSERT_TRUE(reaches(PlainMode::setup));
    quit();
}

TEST_F(AppModelTest, OpenAtLoginShowsWhatTheSystemSays) {
    model().setOpensAtLogin(true);
    model().setOpensAtLogin(false);
    EXPECT_EQ(login_->registrations, (std::vector<bool>{true, false}));
    EXPECT_EQ(model().loginItemStatus(), LoginItemStatus(PlainLoginItemStatus::disabled));
}

TEST_F(AppModelTest, QuittingDuringACheckWaitsForItAndNothingBeginsAfterwards) {
    include();
    for (int i = 0; i < 2000; ++i) write("file " + std::to_string(i), 1);
    model().start();
    ASSERT_TRUE(reaches(PlainMode::setup));
    model().checkNow();
    ASSERT_TRUE(runUntil([&] { return model().checking().has_value(); }));
    quit();
    model().checkNow();
    model().driveMounted();
    model().computerWoke();
    model().showExample();
    QCoreApplication::processEvents();
    EXPECT_EQ(model().mode(), AppMode(PlainMode::setup));
    EXPECT_EQ(model().session().store()->logBytes(), 0U);
}

}  // namespace
}  // namespace brindle
