#include "ui/theme/ThemeTokens.h"

namespace brindle {

ThemeTokens::ThemeTokens(QObject* parent) : QObject(parent), appearance_(Appearance::current()) {
    connect(&appearance_, &Appearance::colorsChanged, this, &ThemeTokens::colorsChanged);
    connect(&appearance_, &Appearance::textSizeChanged, this, &ThemeTokens::textSizeChanged);
    connect(&appearance_, &Appearance::motionChanged, this, &ThemeTokens::motionChanged);
}

QVariantList ThemeTokens::netColors() const {
    QVariantList colors;
    for (int step = -4; step <= 4; ++step) colors.append(appearance_.color(netToken(step)));
    return colors;
}

}  // namespace brindle
