#include "app/EventLoop.h"
#include "ui/screenshots/Scenes.h"

#include <filesystem>

namespace brindle::screenshots {
namespace {

namespace fs = std::filesystem;

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

}  // namespace

/// Locations in every state, and what is asked and told before they are changed.
Scene locationsScene() {
    const auto folders = std::make_shared<TempFolder>();
    StageSettings settings = recorded([folders](TempHistory& history, UnixTime now) {
        history.include("Documents");
        history.include("Letters");
        for (const char* id : {"Documents", "Letters"})
            history.check(id, {{"a", 1'000'000}, {"b/c", 25'000'000}}, {.unreadable = {{"Private", true}}});
        history.store().setStatus({"Letters"}, LocationStatus::needsAccess).get();
        fs::create_directories(folders->path() / "Pictures/Raw");
        LocationRecord raw = makeCandidate(folders->path() / "Pictures/Raw", {}, now).record;
        raw.id = {"Raw"};
        history.store().insert(raw).get();
    });
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

}  // namespace brindle::screenshots
