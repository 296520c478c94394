#pragma once

#include "app/AppModel.h"

#include <QString>

// What commands are called that stand in more than one menu.

namespace brindle {

[[nodiscard]] QString pauseTitle(const Settings& settings);
[[nodiscard]] QString miniWindowTitle(const AppModel& model);

}  // namespace brindle
