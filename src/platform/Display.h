#pragma once

namespace brindle {

/// Whether the environment names a display that a window could open on.
[[nodiscard]] bool hasDisplay();

}  // namespace brindle
