#pragma once

#include "app/AppModel.h"
#include "app/EventLoop.h"
#include "app/RecordingLoginItem.h"
#include "app/Tracking.h"
#include "support/TempHistory.h"

#include <memory>
#include <string>
#include <utility>

namespace brindle {

/// An application model for the tests of a page, in UTC and English, at the time that the test sets.
class ShownHistory {
public:
    explicit ShownHistory(UnixTime now = TempHistory().now) : now_(now) {}

    /// The model, made at the first call.
    [[nodiscard]] AppModel& model() {
        if (!model_) model_ = make();
        return *model_;
    }

    /// Shows any history, as the example is shown, once it is loaded; or again, as it has become. False when
    /// it does not come.
    [[nodiscard]] bool show(std::shared_ptr<HistorySource> source) {
        source_ = std::move(source);
        bool isLoaded = false;
        const auto connection =
            QObject::connect(&model(), &AppModel::historyChanged, [&] { isLoaded = true; });
        model().showExample();
        const bool came = runUntil([&] { return isLoaded; });
        QObject::disconnect(connection);
        return came;
    }

    /// Opens the user's own history in `directory`, which nobody else holds open, and goes where it leads.
    [[nodiscard]] bool open(const std::string& directory) {
        directory_ = directory;
        model().start();
        return runUntil([&] { return model().mode() != AppMode(PlainMode::starting); });
    }

    /// What changes the tracked locations, made at the first call.
    [[nodiscard]] Tracking& tracking() {
        if (!tracking_) tracking_ = std::make_unique<Tracking>(model());
        return *tracking_;
    }

    /// Waits for the changes that are being made.
    void endTracking() { tracking_.reset(); }

    void setNow(UnixTime now) { now_ = now; }
    /// What checks walk; before the model is made.
    void setTrees(std::function<std::unique_ptr<const TreeSource>()> trees) { trees_ = std::move(trees); }

private:
    class NoAlarm : public Alarm {
    public:
        void callIn(std::chrono::milliseconds /*time*/, std::function<void()> /*callback*/) override {}
        void cancel() override {}
    };

    [[nodiscard]] std::unique_ptr<AppModel> make() {
        const std::string settings = (folder_.path() / "preferences.json").string();
        LaunchOptions options;
        options.dataDirectory = directory_;
        return std::make_unique<AppModel>(AppParts{
            .options = options,
            .preferences = {.checksPaused = true, .startupSetupCompleted = true},
            .settingsFile = SettingsFile(settings),
            .session = {.dataDirectory = directory_,
                        .clock = {.now = [this] { return now_; },
                                  .calendar = [calendar = Calendar("en_US", "UTC")] { return calendar; }},
                        .trees = trees_},
            .alarm = std::make_unique<NoAlarm>(),
            .uptime = [] { return Schedule::Moment(0); },
            .loginItem = std::make_unique<RecordingLoginItem>(),
            .updates =
                [settings](std::function<bool()> isBusy) {
                    return std::make_unique<UpdateController>(
                        false, SettingValues(),
                        UpdateServices{.runningVersion = *ProgramVersion::from("1.0"),
                                       .settings = SettingValues(),
                                       .settingsFile = SettingsFile(settings)},
                        std::move(isBusy));
                },
            .example = [this] { return source_; }});
    }

    TempFolder folder_;
    std::string directory_ = (folder_.path() / "data").string();
    UnixTime now_;
    std::function<std::unique_ptr<const TreeSource>()> trees_ = [] { return makeTreeSource(); };
    std::shared_ptr<HistorySource> source_;
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<Tracking> tracking_;
};

}  // namespace brindle
