#include "ui/charts/CornerMark.h"

#include <QPainter>

namespace brindle {

CornerMark::CornerMark(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &CornerMark::markChanged, this, [this] { update(); });
}

void CornerMark::paint(QPainter* painter) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(color_);
    const QPointF corner(isMirrored_ ? 0 : width(), 0);
    painter->drawPolygon(QPolygonF({QPointF(0, 0), QPointF(width(), 0), corner + QPointF(0, height())}));
}

}  // namespace brindle
