#include "ui/marks/GridPath.h"

#include <QPainter>
#include <QPen>

namespace brindle {

GridPath::GridPath(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void GridPath::setPath(const QString& path) {
    if (path == path_) return;
    path_ = path;
    shape_ = GridShape::from(path.toStdString(), shape_.grid);
    update();
    Q_EMIT changed();
}

void GridPath::paint(QPainter* painter) {
    if (shape_.grid.isEmpty()) return;
    const QRectF all = boundingRect();
    if (isMirrored_) {
        painter->translate(all.width(), 0);
        painter->scale(-1, 1);
    }
    const QPainterPath drawn = shape_.pathIn(all);
    if (fill_.alpha() > 0) painter->fillPath(drawn, fill_);
    if (outline_.alpha() > 0)
        painter->strokePath(drawn, QPen(outline_, lineWidth_ * shape_.scaleIn(all), Qt::SolidLine,
                                        Qt::RoundCap, Qt::RoundJoin));
}

}  // namespace brindle
