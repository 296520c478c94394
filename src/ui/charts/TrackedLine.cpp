#include "ui/charts/TrackedLine.h"

#include <QPainter>
#include <QPainterPath>
#include <utility>

namespace brindle {

TrackedLine::TrackedLine(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &TrackedLine::lineChanged, this, [this] { update(); });
}

void TrackedLine::paint(QPainter* painter) {
    if (shares_.empty()) return;
    const qreal dayWidth = width() / static_cast<qreal>(shares_.size());
    // The whole line stays inside, whatever its width.
    const qreal span = height() - lineWidth_;
    QPainterPath path;
    bool isBroken = true;
    for (qsizetype i = 0; i < shares_.size(); ++i) {
        const qreal share = shares_.at(i);
        if (share < 0) {
            isBroken = true;
            continue;
        }
        const QPointF begin(static_cast<qreal>(i) * dayWidth, lineWidth_ / 2 + (1 - share) * span);
        if (std::exchange(isBroken, false))
            path.moveTo(begin);
        else
            path.lineTo(begin);
        path.lineTo(begin + QPointF(dayWidth, 0));
    }
    if (isMirrored_) {
        painter->translate(width(), 0);
        painter->scale(-1, 1);
    }
    painter->setPen(QPen(color_, lineWidth_, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter->drawPath(path);
}

}  // namespace brindle
