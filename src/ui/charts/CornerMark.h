#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A triangle in the item's upper corner at the end of the line: what partial days are marked with.
class CornerMark : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY markChanged)
    Q_PROPERTY(bool isMirrored MEMBER isMirrored_ NOTIFY markChanged)

public:
    explicit CornerMark(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void markChanged();

private:
    QColor color_;
    bool isMirrored_ = false;
};

}  // namespace brindle
