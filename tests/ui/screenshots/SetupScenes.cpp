#include "app/EventLoop.h"
#include "support/FakeTree.h"
#include "ui/screenshots/Scenes.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <thread>

namespace brindle::screenshots {
namespace {

namespace fs = std::filesystem;

/// A disk on which a check stands still in the middle until it is let go.
struct SlowDisk {
    static constexpr int filesBefore = 48'128;

    std::atomic<bool> isHeld = true;

    [[nodiscard]] std::unique_ptr<const TreeSource> tree() {
        auto tree = std::make_unique<FakeTree>();
        tree->files(filesBefore + 2000, {.size = 351'000});
        tree->beforeEvent = [this](int read) {
            using namespace std::chrono_literals;
            if (read == filesBefore) std::this_thread::sleep_for(2s);
            while (isHeld && read > filesBefore + 300) std::this_thread::sleep_for(5ms);
        };
        return tree;
    }
};

/// Chooses a folder as the user does, and waits for what comes of it.
void include(Stage& stage, const std::string& name) {
    LocationChoice& choice = *stage.mainWindow().setup().locations();
    const int before = choice.chosen()->rowCount();
    fs::create_directories(stage.folder().path() / "ann" / name);
    choice.include((stage.folder().path() / "ann" / name).lexically_normal().string());
    static_cast<void>(runUntil([&] {
        return choice.chosen()->rowCount() > before || choice.message() != "" || choice.question() != "";
    }));
}

}  // namespace

Scene firstRunScene() {
    StageSettings settings{.isExample = false};
    settings.preferences.startupSetupCompleted = false;
    const auto disk = std::make_shared<SlowDisk>();
    settings.trees = [disk] { return disk->tree(); };
    const auto goOn = [](Stage& stage) { stage.mainWindow().setup().goOn(); };
    const auto reach = [](Stage& stage, FirstCheckModel::State state) {
        static_cast<void>(runUntil([&] { return stage.mainWindow().setup().check()->state() == state; }));
    };
    std::vector<View> views;
    const auto add = [&](const char* name, std::function<void(Stage&)> go) {
        views.push_back({name, std::move(go)});
    };
    add("welcome", [](Stage&) {});
    add("nothing-chosen", goOn);
    add("refused", [](Stage& stage) {
        include(stage, "Documents");
        include(stage, "Music");
        include(stage, "Documents/Letters");
    });
    add("question", [](Stage& stage) { include(stage, ""); });
    add("startup", [](Stage& stage) {
        stage.mainWindow().setup().locations()->answer(false);
        stage.mainWindow().setup().goOn();
    });
    add("running", [goOn](Stage& stage) {
        goOn(stage);
        static_cast<void>(
            runUntil([&] { return stage.model().checking() && stage.model().checking()->filesSeen > 0; }));
    });
    add("stopped", [disk, reach](Stage& stage) {
        stage.mainWindow().setup().check()->stop();
        disk->isHeld = false;
        reach(stage, FirstCheckModel::Stopped);
    });
    add("failed", [goOn, reach](Stage& stage) {
        fs::remove_all(stage.folder().path() / "ann");
        goOn(stage);
        reach(stage, FirstCheckModel::Failed);
    });
    return {"first-run", std::move(settings), std::move(views)};
}

/// The first-run screens over a history that is there already.
Scene setUpAgainScene() {
    Scene scene = firstDayScene();
    const auto goOn = [](Stage& stage) { stage.mainWindow().setup().goOn(); };
    scene.name = "set-up-again";
    scene.views = {
        {"welcome", [](Stage& stage) { stage.model().showSetup(); }}, {"locations", goOn}, {"startup", goOn}};
    return scene;
}

/// Every section of the settings, at the smallest size and at a larger one.
Scene settingsScene() {
    Scene scene = firstWeekScene();
    scene.name = "settings";
    scene.settings.hasUpdates = true;
    scene.views.clear();
    for (const auto section : {SettingsModel::Appearance, SettingsModel::StorageChecks,
                               SettingsModel::Startup, SettingsModel::Privacy, SettingsModel::Updates})
        scene.views.push_back({fmt::format("section-{}", static_cast<int>(section)), [section](Stage& stage) {
                                   stage.mainWindow().showUpdates();
                                   stage.model().updates()->checkForUpdates();
                                   QQuickWindow& window = *stage.mainWindow().settings().window();
                                   window.property("model").value<SettingsModel*>()->setSection(section);
                               }});
    scene.window = [](Stage& stage) -> QQuickWindow& { return *stage.mainWindow().settings().window(); };
    scene.sizes = {QSize(884, 572), QSize(1100, 760)};
    return scene;
}

}  // namespace brindle::screenshots
