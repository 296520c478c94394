#include "ui/theme/BRFontModifier.h"

#include "ui/theme/TabularFont.h"

#include <QFontDatabase>
#include <cmath>
#include <map>

namespace brindle {
namespace {

QString textFamily() {
    const QString wanted = "Inter";
    return QFontDatabase::hasFamily(wanted) ? wanted
                                            : QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

const QString& figureFamily(QFont font) {
    static std::map<int, QString> families;  // by weight
    const auto [known, isNew] = families.try_emplace(font.weight());
    if (isNew) {
        // At small sizes hinting could make digits equally wide by accident.
        font.setPixelSize(200);
        known->second = tabularFamily(font);
    }
    return known->second;
}

}  // namespace

QFont BRFontModifier::font(BRText role) const {
    const TextStyle& style = textStyle(role);
    QFont font(textFamily());
    font.setWeight(static_cast<QFont::Weight>(style.weight));
    font.setPixelSize(static_cast<int>(std::lround(style.size * scale_)));
    if (style.isFigure) font.setFamily(figureFamily(font));
    return font;
}

}  // namespace brindle
