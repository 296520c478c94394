#include "ui/Scene.h"
#include "ui/theme/BRFontModifier.h"
#include "ui/theme/TabularFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <gtest/gtest.h>

namespace brindle {
namespace {

constexpr const char* bound = R"(
    Item {
        property color ground: Theme.ground
        property color day: Theme.netColor(3)
        property real width100: Theme.scaled(100)
        property real textSize: Theme.body.pixelSize
        property int motion: Theme.motion
        ScaledFrame { objectName: "fixed"; baseWidth: 100; alignment: Qt.AlignRight; Text { text: "7"; font: Theme.figure } }
        ScaledFrame { objectName: "least"; baseMinimumWidth: 10; Text { text: "A long sentence."; font: Theme.body } }
    })";

QColor colorOf(ColorToken token, ColorScheme scheme, bool isContrastIncreased = false) {
    return QColor::fromRgb(themeColor(token).value(scheme, isContrastIncreased));
}

TEST(Theme, FollowsTheSettingsAndTheSystemAtOnce) {
    Scene scene;
    const QQuickItem& shown = scene.show(bound);
    const auto ground = [&] { return shown.property("ground").value<QColor>(); };
    EXPECT_EQ(ground(), colorOf(ColorToken::ground, ColorScheme::dark)) << "dark unless told otherwise";
    scene.settings().setAppearance(AppearanceMode::light);
    EXPECT_EQ(ground(), colorOf(ColorToken::ground, ColorScheme::light));
    EXPECT_EQ(shown.property("day").value<QColor>(), colorOf(ColorToken::netAdded3, ColorScheme::light));
    scene.appearance().setSystem({.prefersDark = true});
    EXPECT_EQ(ground(), colorOf(ColorToken::ground, ColorScheme::light)) << "the setting forces it";
    scene.settings().setAppearance(AppearanceMode::system);
    EXPECT_EQ(ground(), colorOf(ColorToken::ground, ColorScheme::dark));
    scene.appearance().setSystem({.prefersDark = false, .isContrastIncreased = true});
    EXPECT_EQ(shown.property("day").value<QColor>(),
              colorOf(ColorToken::netAdded3, ColorScheme::light, true));

    EXPECT_GT(shown.property("motion").toInt(), 0);
    scene.appearance().setSystem({.isMotionReduced = true});
    EXPECT_EQ(shown.property("motion").toInt(), 0);
    EXPECT_EQ(scene.warnings(), "");
}

TEST(Theme, FramesThatHoldTextGrowWithIt) {
    Scene scene;
    scene.show(bound);
    double last = 0;
    for (const TextSize size : {TextSize::standard, TextSize::large, TextSize::extraLarge}) {
        scene.settings().setTextSize(size);
        const double scale = textScale(size);
        EXPECT_GT(scale, last);
        last = scale;
        EXPECT_NEAR(scene.item().property("width100").toDouble(), 100 * scale, 0.5);
        EXPECT_NEAR(scene.item("fixed").implicitWidth(), 100 * scale, 0.5);
        EXPECT_GT(scene.item("least").implicitWidth(), 100) << "as wide as what it holds";
        EXPECT_NEAR(scene.item().property("textSize").toDouble(), textStyle(BRText::body).size * scale, 0.5);
        EXPECT_EQ(QGuiApplication::font(), BRFontModifier(size).font(BRText::body));
    }
    EXPECT_EQ(textScale(TextSize::standard), 1);
}

TEST(Theme, EveryDigitOfAFigureIsEquallyWide) {
    for (const TextSize size : {TextSize::standard, TextSize::large, TextSize::extraLarge})
        for (int role = 0; role <= static_cast<int>(BRText::figureInline); ++role) {
            const TextStyle& style = textStyle(static_cast<BRText>(role));
            const QFont font = BRFontModifier(size).font(style.role);
            EXPECT_TRUE(!style.isFigure || hasTabularDigits(font)) << "role " << role;
            EXPECT_EQ(QFontInfo(font).weight(), static_cast<int>(style.weight)) << "role " << role;
        }
}

TEST(Theme, FiguresLookLikeTheTextBesideThem) {
    if (!QFontDatabase::hasFamily("Inter")) GTEST_SKIP() << "fonts-inter is not installed";
    const BRFontModifier fonts(TextSize::standard);
    const QFontMetricsF text(fonts.font(BRText::body));
    const QFontMetricsF figures(fonts.font(BRText::figureInline));
    EXPECT_EQ(text.ascent(), figures.ascent());
    EXPECT_EQ(text.horizontalAdvance("GB"), figures.horizontalAdvance("GB"));
}

TEST(TabularFont, AFontWithoutTabularDigitsIsReplacedByOneThatHasThem) {
    QFont font("P052");
    font.setPixelSize(100);
    QFont tabular(font);
    tabular.setFamily(tabularFamily(font));
    EXPECT_TRUE(hasTabularDigits(tabular)) << tabular.family().toStdString();
}

}  // namespace
}  // namespace brindle
