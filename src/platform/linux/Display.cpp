#include "platform/Display.h"

#include "platform/Paths.h"

#include <algorithm>
#include <iterator>

namespace brindle {

bool hasDisplay() {
    // The last is how the window's library is told where to open, for instance nowhere.
    const char* const variables[] = {"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"};
    return std::ranges::any_of(variables,
                               [](const char* name) { return !environmentValue(name).value_or("").empty(); });
}

}  // namespace brindle
