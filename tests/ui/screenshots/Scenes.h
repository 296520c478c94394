#pragma once

#include "support/TempHistory.h"
#include "ui/Stage.h"

#include <QSize>
#include <functional>
#include <string>
#include <vector>

namespace brindle::screenshots {

/// A state of the window, and how it is reached from the one before.
struct View {
    std::string name;
    std::function<void(Stage&)> go;
};

/// What is rendered of one stage: the views, one after the other, at each size.
struct Scene {
    std::string name;
    StageSettings settings;
    std::vector<View> views;
    std::function<QQuickWindow&(Stage&)> window = [](Stage& stage) -> QQuickWindow& {
        return stage.window();
    };
    std::vector<QSize> sizes{{960, 680}, {1440, 900}};
};

/// A stage whose own history is what `record` writes; `now` is the stage's time.
[[nodiscard]] StageSettings recorded(std::function<void(TempHistory&, UnixTime now)> record);

/// Opens a page.
[[nodiscard]] std::function<void(Stage&)> page(Destination destination);
[[nodiscard]] std::vector<View> everyPage();

[[nodiscard]] Scene exampleScene();
[[nodiscard]] Scene firstDayScene();
[[nodiscard]] Scene firstWeekScene();
[[nodiscard]] Scene manyChangesScene();
[[nodiscard]] Scene locationsScene();
[[nodiscard]] Scene unavailableScene();
[[nodiscard]] Scene damagedScene();
[[nodiscard]] Scene firstRunScene();
[[nodiscard]] Scene setUpAgainScene();
[[nodiscard]] Scene settingsScene();
[[nodiscard]] Scene miniExampleScene();
[[nodiscard]] Scene miniCheckScene();
[[nodiscard]] Scene miniWelcomeScene();

}  // namespace brindle::screenshots
