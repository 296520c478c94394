#pragma once

#include "ui/marks/GridShape.h"

#include <QColor>
#include <QQuickPaintedItem>
#include <QSizeF>
#include <QString>

namespace brindle {

/// One path string, filled, outlined or both, scaled into the item.
class GridPath : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY changed)
    Q_PROPERTY(QSizeF grid READ grid WRITE setGrid NOTIFY changed)
    Q_PROPERTY(QColor fill READ fill WRITE setFill NOTIFY changed)                 // transparent: not filled
    Q_PROPERTY(QColor outline READ outline WRITE setOutline NOTIFY changed)        // likewise
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY changed)  // grid units
    Q_PROPERTY(bool isMirrored READ isMirrored WRITE setMirrored NOTIFY changed)

public:
    explicit GridPath(QQuickItem* parent = nullptr);

    [[nodiscard]] const QString& path() const { return path_; }
    [[nodiscard]] QSizeF grid() const { return shape_.grid; }
    [[nodiscard]] QColor fill() const { return fill_; }
    [[nodiscard]] QColor outline() const { return outline_; }
    [[nodiscard]] double lineWidth() const { return lineWidth_; }
    [[nodiscard]] bool isMirrored() const { return isMirrored_; }

    void setPath(const QString& path);
    void setGrid(QSizeF grid) { set(shape_.grid, grid); }
    void setFill(const QColor& color) { set(fill_, color); }
    void setOutline(const QColor& color) { set(outline_, color); }
    void setLineWidth(double width) { set(lineWidth_, width); }
    void setMirrored(bool isMirrored) { set(isMirrored_, isMirrored); }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    template <class Value>
    void set(Value& field, const Value& value) {
        if (field == value) return;
        field = value;
        update();
        Q_EMIT changed();
    }

    QString path_;
    GridShape shape_;
    QColor fill_ = Qt::transparent;
    QColor outline_ = Qt::transparent;
    double lineWidth_ = 1;
    bool isMirrored_ = false;
};

}  // namespace brindle
