// Renders every page and state of the window to pictures, to be looked at.

#include "model/Catalogues.h"
#include "ui/DesktopApplication.h"
#include "ui/screenshots/Scenes.h"

#include <clocale>
#include <filesystem>
#include <fmt/format.h>
#include <span>

namespace brindle::screenshots {
namespace {

namespace fs = std::filesystem;

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
}  // namespace brindle::screenshots

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("HOME", "/home/ann");
    std::setlocale(LC_ALL, "");
    brindle::useCatalogues(BRINDLE_CATALOGUES);
    brindle::DesktopApplication application(argc, argv);
    try {
        return brindle::screenshots::run(std::span(argv, static_cast<std::size_t>(argc)));
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 1;
    }
}
