#include "ui/screenshots/Scenes.h"

namespace brindle::screenshots {
namespace {

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

}  // namespace

std::function<void(Stage&)> page(Destination destination) {
    return [destination](Stage& stage) { stage.model().selection()->setDestination(destination); };
}

std::vector<View> everyPage() {
    return {{"overview", page(Destination::overview)},
            {"activity", page(Destination::activity)},
            {"history", page(Destination::history)},
            {"trends", page(Destination::trends)},
            {"drives", page(Destination::locations)}};
}

Scene exampleScene() {
    std::vector<View> views = everyPage();
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

}  // namespace brindle::screenshots
