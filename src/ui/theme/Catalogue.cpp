#include "ui/theme/Catalogue.h"

#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {

QString Catalogue::translated(const QString& text) const {
    return QString::fromUtf8(brindle::translated(text.toUtf8().constData()));
}

QString Catalogue::translatedCount(const QString& one, const QString& many, qint64 count) const {
    const QByteArray oneText = one.toUtf8();
    const QByteArray manyText = many.toUtf8();
    return QString::fromUtf8(brindle::translatedCount(oneText.constData(), manyText.constData(), count))
        .replace("{}", QString::fromStdString(groupedNumber(count)));
}

}  // namespace brindle
