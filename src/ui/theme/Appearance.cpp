#include "ui/theme/Appearance.h"

#include "ui/theme/BRFontModifier.h"

#include <QGuiApplication>
#include <QPalette>

namespace brindle {
namespace {

Appearance* theOne = nullptr;

// The desktop's own colours tell how it looks where it does not say so.
ColorScheme schemeOfDesktop() {
    const QPalette desktop = QGuiApplication::palette();
    const bool isDark = desktop.color(QPalette::Window).lightness() < 128;
    return isDark ? ColorScheme::dark : ColorScheme::light;
}

}  // namespace

Appearance::Appearance(const Settings& settings) : settings_(settings) {
    Q_ASSERT(theOne == nullptr);
    theOne = this;
    const auto followTextSize = [this] {
        QGuiApplication::setFont(font(BRText::body));
        Q_EMIT textSizeChanged();
    };
    connect(&settings, &Settings::appearanceChanged, this, &Appearance::colorsChanged);
    connect(&settings, &Settings::textSizeChanged, this, followTextSize);
    followTextSize();
}

Appearance::~Appearance() {
    theOne = nullptr;
}

Appearance& Appearance::current() {
    Q_ASSERT(theOne != nullptr);
    return *theOne;
}

void Appearance::setSystem(const SystemAppearance& system) {
    const SystemAppearance before = std::exchange(system_, system);
    if (before.isMotionReduced != system.isMotionReduced) Q_EMIT motionChanged();
    if (before.prefersDark != system.prefersDark || before.isContrastIncreased != system.isContrastIncreased)
        Q_EMIT colorsChanged();
}

ColorScheme Appearance::scheme() const {
    switch (settings_.appearance()) {
        case AppearanceMode::dark:
            return ColorScheme::dark;
        case AppearanceMode::light:
            return ColorScheme::light;
        case AppearanceMode::system:
            break;
    }
    if (!system_.prefersDark) return schemeOfDesktop();
    return *system_.prefersDark ? ColorScheme::dark : ColorScheme::light;
}

QColor Appearance::color(ColorToken token) const {
    return QColor::fromRgb(themeColor(token).value(scheme(), isContrastIncreased()));
}

QFont Appearance::font(BRText role) const {
    return BRFontModifier(textSize()).font(role);
}

}  // namespace brindle
