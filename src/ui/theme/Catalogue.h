#pragma once

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

    [[nodiscard]] Q_INVOKABLE QString translated(const QString& text) const;
    /// The form that fits `count`, with the count in it where the text has "{}".
    [[nodiscard]] Q_INVOKABLE QString translatedCount(const QString& one, const QString& many,
                                                      qint64 count) const;
};

}  // namespace brindle
