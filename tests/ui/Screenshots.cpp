// Renders every page and state of the window to pictures, to be looked at.

#include "app/EventLoop.h"
#include "model/Catalogues.h"
#include "platform/TreeReader.h"
#include "support/FakeTree.h"
#include "support/HookedTree.h"
#include "support/TempHistory.h"
#include "ui/DesktopApplication.h"
#include "ui/Stage.h"

#include <QDir>
#include <QQuickItem>
#include <QQuickStyle>
#include <atomic>
#include <chrono>
#include <clocale>
#include <fmt/format.h>
#include <fstream>
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
    add("activity-moves", activity([](ExplorerState& state) {
            state.mode = ExplorerMode::files;
            state.search = "Deliver";
        }));
    add("activity-moved-folders", activity([](ExplorerState& state) {
            state.folder = FolderRef{{"example.studio-ssd"}, {"Archive"}};
        }));
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
    add("about",
        [](Stage& stage) { QMetaObject::invokeMethod(stage.window().findChild<QObject*>("about"), "open"); });
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

LocationActionsModel& actions(Stage& stage) {
    return *stage.window().property("drives").value<DrivesModel*>()->actions();
}

/// Does something with the locations' sheets, on their page.
std::function<void(Stage&)> sheet(const std::function<void(LocationActionsModel&)>& show) {
    return [show](Stage& stage) {
        stage.model().selection()->setDestination(Destination::locations);
        show(actions(stage));
    };
}

/// Locations in every state, and what is asked and told before they are changed.
Scene locationsScene() {
    StageSettings settings{.isExample = false};
    const auto folders = std::make_shared<TempFolder>();
    settings.prepare = [folders, now = settings.now](const std::string& data) {
        TempHistory history;
        history.include("Documents");
        history.include("Letters");
        for (const char* id : {"Documents", "Letters"})
            history.check(id, {{"a", 1'000'000}, {"b/c", 25'000'000}}, {.unreadable = {{"Private", true}}});
        history.store().setStatus({"Letters"}, LocationStatus::needsAccess).get();
        fs::create_directories(folders->path() / "Pictures/Raw");
        LocationRecord raw = makeCandidate(folders->path() / "Pictures/Raw", {}, now).record;
        raw.id = {"Raw"};
        history.store().insert(raw).get();
        history.close();
        fs::copy(history.directory(), data);
    };
    std::vector<DriveChoice> drives{
        {.drive = {.id = "1", .name = "System", .mountPath = "/"}, .totalBytes = 994'700'000'000},
        {.drive = {.id = "2", .name = "Studio SSD", .mountPath = "/media/ann/Studio SSD"},
         .totalBytes = 2'000'400'000'000},
        {.drive = {.id = "3", .name = "server", .mountPath = "/home/ann/server"},
         .reason = LocationChoiceError(LocationChoiceError::Reason::notLocal, "").what()}};
    const std::string pictures = folders->path() / "Pictures";
    return {"locations",
            std::move(settings),
            {{"actions", page(Destination::locations)},
             {"add-drive", sheet([drives](LocationActionsModel& model) {
                  model.addDrive();
                  const QString looking = model.text();
                  (void)runUntil([&] { return model.text() != looking; });
                  model.takeDrives(drives);  // not those of this computer
              })},
             {"overlap", sheet([pictures](LocationActionsModel& model) {
                  model.dismiss();
                  model.addFolder();
                  model.takeFolder(pictures);
              })},
             {"refused", sheet([pictures](LocationActionsModel& model) {
                  model.dismiss();
                  model.takeFolder(pictures + "/Raw");
              })},
             {"stop", sheet([](LocationActionsModel& model) { model.stopTracking("Documents"); })},
             {"forget", sheet([](LocationActionsModel& model) { model.forget("Raw"); })},
             {"none", sheet([](LocationActionsModel& model) {
                  model.confirm();
                  for (const char* id : {"Documents", "Letters"}) {
                      model.stopTracking(id);
                      model.confirm();
                  }
              })}}};
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

std::function<void(Stage&)> press(const char* name) {
    return [name](Stage& stage) { QMetaObject::invokeMethod(stage.item(name), "clicked"); };
}

/// A history whose pages are gone but for the first.
Scene damagedScene() {
    StageSettings settings{.isExample = false};
    settings.prepare = [](const std::string& data) {
        TempHistory history;
        history.include("Documents");
        history.close();
        std::fstream(history.file(), std::ios::in | std::ios::out | std::ios::binary).seekp(4096)
            << std::string(fs::file_size(history.file()) - 4096, 'x');
        fs::copy(history.directory(), data);
    };
    return {
        "damaged",
        std::move(settings),
        {{"screen", [](Stage&) {}}, {"question", press("recover")}, {"recovered", press("confirmRecovery")}}};
}

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
         {exampleScene(), firstDayScene(), firstWeekScene(), locationsScene(), manyChangesScene(),
          unavailableScene(), damagedScene(), firstRunScene(), setUpAgainScene(), settingsScene(),
          miniExampleScene(), miniCheckScene(), miniWelcomeScene()})
        if (only.empty() || scene.name == only) render(scene, folder);
    return 0;
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("HOME", "/home/ann");
    std::setlocale(LC_ALL, "");
    brindle::useCatalogues(BRINDLE_CATALOGUES);
    brindle::DesktopApplication application(argc, argv);
    try {
        return brindle::run(std::span(argv, static_cast<std::size_t>(argc)));
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 1;
    }
}
