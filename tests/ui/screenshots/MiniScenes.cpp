#include "support/HookedTree.h"
#include "ui/screenshots/Scenes.h"

#include <chrono>
#include <filesystem>
#include <thread>

namespace brindle::screenshots {
namespace {

namespace fs = std::filesystem;

/// The mini window in a corner of whatever the stage has.
Scene miniScene(std::string name, StageSettings settings, std::vector<View> views) {
    settings.begin = [](DesktopSurfaces&) {};
    settings.preferences.checksPaused = false;
    views.insert(views.begin(), {"open", [](Stage& stage) { stage.model().setMiniWindowOpen(true); }});
    return {std::move(name),
            std::move(settings),
            std::move(views),
            [](Stage& stage) -> QQuickWindow& { return *stage.surfaces().miniWindow().window(); },
            {QSize(300, 176)}};
}

}  // namespace

Scene miniExampleScene() {
    return miniScene(
        "mini-example", {},
        {{"on-top", [](Stage& stage) { stage.model().settings()->setMiniWindowKeepsOnTop(true); }},
         {"paused", [](Stage& stage) { stage.model().settings()->setChecksPaused(true); }}});
}

/// A folder that was last checked yesterday, and whose check goes on until the stage is gone.
Scene miniCheckScene() {
    StageSettings settings = recorded([](TempHistory& history, UnixTime now) {
        history.now = now - 86'400;
        LocationRecord record = makeCandidate(fs::temp_directory_path().string(), {}, history.now).record;
        record.name = "Photos with a name that is much longer than names usually are";
        const LocationID id = record.id;
        history.store().insert(record).get();
        history.check(id.rawValue, {{"a", 1'000'000}});
    });
    // Lets no walk end while it can be seen.
    settings.trees = [] {
        return std::make_unique<HookedTree>(
            [](const std::string&) { std::this_thread::sleep_for(std::chrono::seconds(20)); });
    };
    return miniScene("mini-check", std::move(settings), {});
}

Scene miniWelcomeScene() {
    StageSettings settings{.isExample = false};
    settings.preferences.startupSetupCompleted = false;
    return miniScene("mini-welcome", std::move(settings), {});
}

}  // namespace brindle::screenshots
