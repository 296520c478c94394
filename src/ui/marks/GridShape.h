#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QSizeF>
#include <string_view>

namespace brindle {

/// A path on a grid, drawn as large as it fits into a rectangle, and in its middle.
struct GridShape {
    QPainterPath path;  // in grid units
    QSizeF grid;

    /// Of a path string; one that cannot be parsed draws nothing.
    [[nodiscard]] static GridShape from(std::string_view pathText, QSizeF grid);

    /// How many units of the rectangle one of the grid is.
    [[nodiscard]] double scaleIn(const QRectF& rectangle) const;
    [[nodiscard]] QPainterPath pathIn(const QRectF& rectangle) const;
};

}  // namespace brindle
