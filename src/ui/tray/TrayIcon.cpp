#include "ui/tray/TrayIcon.h"

#include "ui/marks/GridShape.h"
#include "ui/marks/Marks.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>

namespace brindle {

QIcon trayIcon() {
    const GridShape glyph = GridShape::from(marks::menuBarGlyph, {marks::brandGrid, marks::brandGrid});
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(glyph.pathIn(pixmap.rect()), QColor::fromRgb(trayIconColor));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace brindle
