#pragma once

#include <QIcon>
#include <cstdint>

namespace brindle {

/// The colour of the tray's icon, 0xRRGGBB. Nobody tells the colour of the panel that it lies on, so it can
/// be seen on dark and on light ones.
inline constexpr std::uint32_t trayIconColor = 0xB8741A;

/// The small glyph, sharp at the sizes that trays have.
[[nodiscard]] QIcon trayIcon();

}  // namespace brindle
