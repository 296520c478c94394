#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Slanted lines over the whole item: what estimates are filled with.
class HatchPattern : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY patternChanged)
    Q_PROPERTY(qreal lineWidth MEMBER lineWidth_ NOTIFY patternChanged)
    /// From one line to the next, along the upper edge.
    Q_PROPERTY(qreal spacing MEMBER spacing_ NOTIFY patternChanged)

public:
    explicit HatchPattern(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void patternChanged();

private:
    QColor color_;
    qreal lineWidth_ = 1;
    qreal spacing_ = 6;
};

}  // namespace brindle
