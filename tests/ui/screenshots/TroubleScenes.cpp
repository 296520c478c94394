#include "ui/screenshots/Scenes.h"

#include <QQuickItem>
#include <filesystem>
#include <fstream>

namespace brindle::screenshots {
namespace {

namespace fs = std::filesystem;

std::function<void(Stage&)> press(const char* name) {
    return [name](Stage& stage) { QMetaObject::invokeMethod(stage.item(name), "clicked"); };
}

}  // namespace

Scene unavailableScene() {
    StageSettings settings = recorded([](TempHistory& history, UnixTime /*now*/) {
        history.include("Documents");
        history.close();
        rowsOf(history.file(), "PRAGMA user_version = 99");
    });
    return {"unavailable", std::move(settings), {{"screen", [](Stage&) {}}}};
}

/// A history whose pages are gone but for the first.
Scene damagedScene() {
    StageSettings settings = recorded([](TempHistory& history, UnixTime /*now*/) {
        history.include("Documents");
        history.close();
        std::fstream(history.file(), std::ios::in | std::ios::out | std::ios::binary).seekp(4096)
            << std::string(fs::file_size(history.file()) - 4096, 'x');
    });
    return {
        "damaged",
        std::move(settings),
        {{"screen", [](Stage&) {}}, {"question", press("recover")}, {"recovered", press("confirmRecovery")}}};
}

}  // namespace brindle::screenshots
