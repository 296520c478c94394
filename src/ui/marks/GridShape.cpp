#include "ui/marks/GridShape.h"

#include "ui/marks/SVGPath.h"

#include <QTransform>
#include <algorithm>

namespace brindle {
namespace {

/// Draws the steps of a path into one of Qt, whose current point after a close is another.
struct Drawing {
    QPainterPath path;
    QPointF begin;
    bool isClosed = false;

    void operator()(const SVGPath::Move& step) {
        begin = {step.to.x, step.to.y};
        path.moveTo(begin);
        isClosed = false;
    }
    void operator()(const SVGPath::Line& step) {
        if (isClosed) path.moveTo(begin);
        path.lineTo(step.to.x, step.to.y);
        isClosed = false;
    }
    void operator()(SVGPath::Close) {
        path.closeSubpath();
        isClosed = true;
    }
};

}  // namespace

GridShape GridShape::from(std::string_view pathText, QSizeF grid) {
    Drawing drawing;
    try {
        for (const SVGPath::Step& step : SVGPath::parse(pathText)) std::visit(drawing, step);
    } catch (const SVGPath::ParseError&) {
        drawing.path.clear();
    }
    return {.path = drawing.path, .grid = grid};
}

double GridShape::scaleIn(const QRectF& rectangle) const {
    return std::min(rectangle.width() / grid.width(), rectangle.height() / grid.height());
}

QPainterPath GridShape::pathIn(const QRectF& rectangle) const {
    const double scale = scaleIn(rectangle);
    QTransform transform;
    transform.translate(rectangle.x() + (rectangle.width() - grid.width() * scale) / 2,
                        rectangle.y() + (rectangle.height() - grid.height() * scale) / 2);
    transform.scale(scale, scale);
    return transform.map(path);
}

}  // namespace brindle
