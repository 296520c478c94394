// Renders every page and state of the window to pictures, to be looked at.

#include "platform/TreeReader.h"
#include "scan/LocationAccess.h"
#include "support/HookedTree.h"
#include "support/TempHistory.h"
#include "ui/DesktopApplication.h"
#include "ui/Stage.h"

#include <QDir>
#include <QQuickStyle>
#include <fmt/format.h>
#include <fstream>
#include <semaphore>
#include <span>
#include <thread>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;

struct View {
    std::string name;
    std::function<void(Stage&)> go;
};

struct Scene {
    std::string name;
    StageSettings settings;
    std::vector<View> views;
    std::function<QQuickWindow&(Stage&)> window = [](Stage& stage) -> QQuickWindow& {
        return stage.window();
    };
    std::vector<QSize> sizes{{960, 680}, {1440, 900}};
};

std::function<void(Stage&)> page(Destination destination) {
    return [destination](Stage& stage) { stage.model().selection()->setDestination(destination); };
}

std::function<void(Stage&)> trends(TrendRange range) {
    return [range](Stage& stage) {
        stage.model().selection()->setDestination(Destination::trends);
        stage.model().selection()->setRange(range);
    };
}

/// The Activity page of the last week, as the explorer's state says.
std::function<void(Stage&)> activity(const std::function<void(ExplorerState&)>& change) {
    return [change](Stage& stage) {
        Selection& selection = *stage.model().selection();
        selection.setDestination(Destination::activity);
        selection.setPeriod(stage.model().calendar().addingDays(selection.today(), -6), selection.today());
        ExplorerState state;
        change(state);
        selection.setExplorer(state);
    };
}

const std::vector<View> everyPage{{"overview", page(Destination::overview)},
                                  {"activity", page(Destination::activity)},
                                  {"history", page(Destination::history)},
                                  {"trends", page(Destination::trends)},
                                  {"drives", page(Destination::locations)}};

Scene exampleScene() {
    std::vector<View> views = everyPage;
    const auto add = [&](const char* name, std::function<void(Stage&)> go) {
        views.push_back({name, std::move(go)});
    };
    add("activity-week", activity([](ExplorerState&) {}));
    add("activity-files", activity([](ExplorerState& state) { state.mode = ExplorerMode::files; }));
    add("activity-search", activity([](ExplorerState& state) { state.search = "re"; }));
    add("activity-nothing-found", activity([](ExplorerState& state) { state.search = "no such name"; }));
    add("trends-month", trends(TrendRange::month));
    add("trends-quarter", trends(TrendRange::quarter));
    add("estimates-overview", [](Stage& stage) {
        stage.model().settings()->setShowsEstimates(true);
        stage.model().selection()->setDestination(Destination::overview);
    });
    add("estimates-history", [](Stage& stage) {
        stage.model().selection()->setDestination(Destination::history);
        const auto& selection = *stage.model().selection();
        stage.model().selection()->setDay(stage.model().calendar().addingDays(selection.today(), -80));
    });
    add("estimates-activity", [](Stage& stage) {
        stage.model().selection()->setExplorer({});
        stage.model().selection()->setDestination(Destination::activity);
    });
    add("export", [](Stage& stage) {
        stage.model().settings()->setShowsEstimates(false);
        stage.model().selection()->setDay(stage.model().selection()->today());
        stage.model().selection()->setDestination(Destination::activity);
        stage.model().prepareExport();
    });
    return {"example", {}, std::move(views)};
}

/// A folder whose baseline is all there is.
Scene firstDayScene() {
    StageSettings settings{.isExample = false};
    settings.prepare = [](const std::string& data) {
        TempHistory history;
        history.include("Documents");
        history.check("Documents", {{"a", 1'000'000}, {"b/c", 25'000'000}});
        history.close();
        fs::copy(history.directory(), data);
    };
    return {"first-day", std::move(settings), everyPage};
}

/// A week with a day that no check covers, one whose check could not read everything, names of every kind,
/// and a drive that is away.
Scene firstWeekScene() {
    StageSettings settings{.isExample = false};
    settings.prepare = [now = settings.now](const std::string& data) {
        TempHistory history;
        history.now = now - 6 * 86'400;
        history.include("Documents");
        history.include("Photos with a name that is much longer than names usually are");
        Files files{{"Letters/a", 1'000'000}, {"Letters/b", 25'000'000}};
        const auto check = [&](ScanReport report = {}) {
            for (const char* id :
                 {"Documents", "Photos with a name that is much longer than names usually are"})
                history.check(id, files, report);
            history.now += 86'400;
        };
        check();
        files["Letters/Drafts/a very long name of a file that somebody once thought explained it all.odt"] =
            4'300'000;
        files["Bytes \xff that are no text"] = 77'000'000;
        files["\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d.txt"] = 1'500'000;
        check();
        files.erase("Letters/b");
        check({.unreadable = {{"Letters/Private", true}}});
        history.now += 86'400;
        files["Films/one.mkv"] = 8'400'000'000;
        check();
        files["Films/one.mkv"] = 9'400'000'000;
        files["Films/two.mkv"] = 1'200'000'000;
        check();
        history.now = now;
        files.erase("Films/two.mkv");
        check();
        history.store().setStatus({"Documents"}, LocationStatus::disconnected).get();
        history.close();
        fs::copy(history.directory(), data);
    };
    return {"first-week", std::move(settings), everyPage};
}

/// Half a million changes on one day.
Scene manyChangesScene() {
    StageSettings settings{.isExample = false};
    settings.prepare = [now = settings.now](const std::string& data) {
        TempHistory history;
        history.now = now - 86'400;
        history.include("Home");
        history.check("Home", {});
        history.now = now;
        Files files;
        for (int i = 0; i < 500'000; ++i)
            files[fmt::format("Folder {}/Part {}/file {}.dat", i % 40, i % 1000, i)] = 1000 + i * 37 % 90'000;
        history.check("Home", files);
        history.close();
        fs::copy(history.directory(), data);
    };
    return {"many-changes", std::move(settings), {everyPage[0], everyPage[1]}};
}

Scene unavailableScene() {
    StageSettings settings{.isExample = false};
    settings.prepare = [](const std::string& data) {
        TempHistory history;
        history.include("Documents");
        history.close();
        rowsOf(history.file(), "PRAGMA user_version = 99");
        fs::copy(history.directory(), data);
    };
    return {"unavailable", std::move(settings), {{"screen", [](Stage&) {}}}};
}

Scene welcomeScene() {
    StageSettings settings{.isExample = false};
    settings.preferences.startupSetupCompleted = false;
    return {"welcome", std::move(settings), {{"screen", [](Stage&) {}}}};
}

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

Scene miniExampleScene() {
    return miniScene(
        "mini-example", {},
        {{"on-top", [](Stage& stage) { stage.model().settings()->setMiniWindowKeepsOnTop(true); }},
         {"paused", [](Stage& stage) { stage.model().settings()->setChecksPaused(true); }}});
}

/// A folder that was last checked yesterday, and whose check goes on until the stage is gone.
Scene miniCheckScene() {
    StageSettings settings{.isExample = false};
    settings.prepare = [now = settings.now](const std::string& data) {
        TempHistory history;
        history.now = now - 86'400;
        LocationRecord record = makeCandidate(fs::temp_directory_path().string(), {}, history.now).record;
        record.name = "Photos with a name that is much longer than names usually are";
        const LocationID id = record.id;
        history.store().insert(record).get();
        history.check(id.rawValue, {{"a", 1'000'000}});
        history.close();
        fs::copy(history.directory(), data);
    };
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

void render(const Scene& scene, const fs::path& folder) {
    Stage stage(scene.settings);
    for (const View& view : scene.views) {
        view.go(stage);
        for (const QSize size : scene.sizes)
            for (const AppearanceMode appearance : {AppearanceMode::dark, AppearanceMode::light})
                for (const TextSize text : {TextSize::standard, TextSize::extraLarge}) {
                    QQuickWindow& window = scene.window(stage);
                    if (window.minimumSize() != window.maximumSize()) window.resize(size);
                    stage.model().settings()->setAppearance(appearance);
                    stage.model().settings()->setTextSize(text);
                    stage.settle();
                    const std::string name = fmt::format("{}-{}-{}-{}-{}.png", scene.name, view.name,
                                                         size.width(), rawText(appearance), rawText(text));
                    if (!window.grabWindow().save(QString::fromStdString((folder / name).string())))
                        throw std::runtime_error("can't write " + (folder / name).string());
                }
        fmt::print("{} {}\n", scene.name, view.name);
    }
}

int run(std::span<char*> arguments) {
    const fs::path folder = arguments.size() > 1 ? arguments[1] : "screenshots";
    const std::string only = arguments.size() > 2 ? arguments[2] : "";
    fs::create_directories(folder);
    for (const Scene& scene :
         {exampleScene(), firstDayScene(), firstWeekScene(), manyChangesScene(), unavailableScene(),
          welcomeScene(), miniExampleScene(), miniCheckScene(), miniWelcomeScene()})
        if (only.empty() || scene.name == only) render(scene, folder);
    return 0;
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    brindle::DesktopApplication application(argc, argv);
    try {
        return brindle::run(std::span(argv, static_cast<std::size_t>(argc)));
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 1;
    }
}
