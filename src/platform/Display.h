#pragma once

namespace brindle {

/// Whether a window could open: the environment names a display, and it takes connections; one that another
/// computer shows is taken to.
[[nodiscard]] bool hasDisplay();

}  // namespace brindle
