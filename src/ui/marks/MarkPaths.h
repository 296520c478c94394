#pragma once

#include "ui/marks/Marks.h"

#include <QObject>
#include <QSizeF>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// The marks' path strings, for QML.
class MarkPaths : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QStringList brandMark READ brandMark CONSTANT)
    Q_PROPERTY(QSizeF brandGrid READ brandGrid CONSTANT)
    Q_PROPERTY(QStringList capacityIllustration READ capacityIllustration CONSTANT)
    Q_PROPERTY(QSizeF capacityGrid READ capacityGrid CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] static QStringList brandMark() {
        return {marks::brandMark.begin(), marks::brandMark.end()};
    }
    [[nodiscard]] static QSizeF brandGrid() { return {marks::brandGrid, marks::brandGrid}; }
    [[nodiscard]] static QStringList capacityIllustration() {
        return {marks::capacityIllustration.begin(), marks::capacityIllustration.end()};
    }
    [[nodiscard]] static QSizeF capacityGrid() {
        return {marks::capacityGridWidth, marks::capacityGridHeight};
    }
};

}  // namespace brindle
