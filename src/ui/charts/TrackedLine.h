#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A size by day as a line of steps: each day is as wide as the others and level from its beginning to its
/// end.
class TrackedLine : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Of each day, the height of the line as a share of the item's: 0 is its lower edge. Where one is
    /// negative, the line is broken.
    Q_PROPERTY(QList<qreal> shares MEMBER shares_ NOTIFY lineChanged)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY lineChanged)
    Q_PROPERTY(qreal lineWidth MEMBER lineWidth_ NOTIFY lineChanged)
    /// The first day is at the right.
    Q_PROPERTY(bool isMirrored MEMBER isMirrored_ NOTIFY lineChanged)

public:
    explicit TrackedLine(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void lineChanged();

private:
    QList<qreal> shares_;
    QColor color_;
    qreal lineWidth_ = 2;
    bool isMirrored_ = false;
};

}  // namespace brindle
