#pragma once

class QWindow;

// What Qt does not tell or do under X11. Elsewhere there is nothing of it.

namespace brindle::x11Desktop {

/// Whether there is a tray of the older kind, into which programs put windows.
[[nodiscard]] bool hasTray();

/// Has the window show on every virtual desktop. To be called each time before it is shown: a window manager
/// forgets it when the window goes.
void joinAllDesktops(QWindow& window);

}  // namespace brindle::x11Desktop
