#include "app/pages/CommandTitles.h"

#include "model/Translation.h"

namespace brindle {

QString pauseTitle(const Settings& settings) {
    return settings.checksPaused() ? translated("Resume Automatic Checks")
                                   : translated("Pause Automatic Checks");
}

QString miniWindowTitle(const AppModel& model) {
    return model.isMiniWindowOpen() ? translated("Close Mini Window") : translated("Open Mini Window");
}

}  // namespace brindle
