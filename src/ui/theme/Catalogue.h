#pragma once

#include "model/Translation.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// The user's language, for QML: the same catalogue that every other text comes from.
class Catalogue : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    [[nodiscard]] Q_INVOKABLE QString translated(const QString& text) const {
        return QString::fromUtf8(brindle::translated(text.toUtf8().constData()));
    }
};

}  // namespace brindle
