#include "ui/charts/HatchPattern.h"

#include <QPainter>

namespace brindle {

HatchPattern::HatchPattern(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &HatchPattern::patternChanged, this, [this] { update(); });
}

void HatchPattern::paint(QPainter* painter) {
    if (spacing_ <= 0) return;
    painter->setPen(QPen(color_, lineWidth_));
    for (qreal x = spacing_ / 2; x < width() + height(); x += spacing_)
        painter->drawLine(QPointF(x, 0), QPointF(x - height(), height()));
}

}  // namespace brindle
