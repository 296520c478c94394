#include "ui/theme/Palette.h"
#include "ui/tray/TrayIcon.h"

#include <QImage>
#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(TrayIcon, CanBeSeenOnDarkAndLightPanels) {
    for (const std::uint32_t panel : {0x000000U, 0x202020U, 0x2E3436U, 0xF0F0F0U, 0xFFFFFFU})
        EXPECT_GE(contrastRatio(trayIconColor, panel), 3) << std::hex << panel;
}

TEST(TrayIcon, IsDrawnForEverySize) {
    const QIcon icon = trayIcon();
    for (const int size : {16, 22, 48}) {
        const QImage image = icon.pixmap(size, size).toImage();
        ASSERT_EQ(image.width(), size);
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
        EXPECT_EQ(image.pixelColor(size / 3, size / 5).rgb(), 0xFF000000 | trayIconColor);
    }
}

}  // namespace
}  // namespace brindle
