#pragma once

#include "ui/theme/Appearance.h"

#include <QColor>
#include <QFont>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// What QML's Theme is made of: the colours, fonts and measures of the current Appearance, as properties.
class ThemeTokens : public QObject {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QColor ground READ ground NOTIFY colorsChanged)
    Q_PROPERTY(QColor surface READ surface NOTIFY colorsChanged)
    Q_PROPERTY(QColor raised READ raised NOTIFY colorsChanged)
    Q_PROPERTY(QColor selection READ selection NOTIFY colorsChanged)
    Q_PROPERTY(QColor line READ line NOTIFY colorsChanged)
    Q_PROPERTY(QColor controlLine READ controlLine NOTIFY colorsChanged)
    Q_PROPERTY(QColor text READ text NOTIFY colorsChanged)
    Q_PROPERTY(QColor textSecondary READ textSecondary NOTIFY colorsChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY colorsChanged)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY colorsChanged)
    Q_PROPERTY(QColor focusRing READ focusRing NOTIFY colorsChanged)
    Q_PROPERTY(QColor added READ added NOTIFY colorsChanged)
    Q_PROPERTY(QColor freed READ freed NOTIFY colorsChanged)
    Q_PROPERTY(QColor estimated READ estimated NOTIFY colorsChanged)
    Q_PROPERTY(QColor warning READ warning NOTIFY colorsChanged)
    Q_PROPERTY(QColor barTrack READ barTrack NOTIFY colorsChanged)
    Q_PROPERTY(QColor filesTone READ filesTone NOTIFY colorsChanged)
    Q_PROPERTY(QColor trashTone READ trashTone NOTIFY colorsChanged)
    Q_PROPERTY(QColor notVisibleTone READ notVisibleTone NOTIFY colorsChanged)
    Q_PROPERTY(QColor otherVolumesTone READ otherVolumesTone NOTIFY colorsChanged)
    Q_PROPERTY(QVariantList netColors READ netColors NOTIFY colorsChanged)
    Q_PROPERTY(bool isDark READ isDark NOTIFY colorsChanged)
    Q_PROPERTY(bool isContrastIncreased READ isContrastIncreased NOTIFY colorsChanged)

    Q_PROPERTY(QFont wordmark READ wordmark NOTIFY textSizeChanged)
    Q_PROPERTY(QFont nav READ nav NOTIFY textSizeChanged)
    Q_PROPERTY(QFont pageTitle READ pageTitle NOTIFY textSizeChanged)
    Q_PROPERTY(QFont section READ section NOTIFY textSizeChanged)
    Q_PROPERTY(QFont label READ label NOTIFY textSizeChanged)
    Q_PROPERTY(QFont body READ body NOTIFY textSizeChanged)
    Q_PROPERTY(QFont bodyEmphasis READ bodyEmphasis NOTIFY textSizeChanged)
    Q_PROPERTY(QFont secondary READ secondary NOTIFY textSizeChanged)
    Q_PROPERTY(QFont caption READ caption NOTIFY textSizeChanged)
    Q_PROPERTY(QFont figureLarge READ figureLarge NOTIFY textSizeChanged)
    Q_PROPERTY(QFont figure READ figure NOTIFY textSizeChanged)
    Q_PROPERTY(QFont figureSmall READ figureSmall NOTIFY textSizeChanged)
    Q_PROPERTY(QFont figureInline READ figureInline NOTIFY textSizeChanged)
    Q_PROPERTY(double textScale READ textScale NOTIFY textSizeChanged)

    Q_PROPERTY(bool isReducedMotion READ isReducedMotion NOTIFY motionChanged)
    Q_PROPERTY(int motion READ motion NOTIFY motionChanged)

    Q_PROPERTY(int gapTiny READ gapTiny CONSTANT)
    Q_PROPERTY(int gapSmall READ gapSmall CONSTANT)
    Q_PROPERTY(int gap READ gap CONSTANT)
    Q_PROPERTY(int gapLarge READ gapLarge CONSTANT)
    Q_PROPERTY(int margin READ margin CONSTANT)
    Q_PROPERTY(int radius READ radius CONSTANT)
    Q_PROPERTY(int borderWidth READ borderWidth CONSTANT)
    Q_PROPERTY(int focusWidth READ focusWidth CONSTANT)
    Q_PROPERTY(int readingWidth READ readingWidth CONSTANT)
    Q_PROPERTY(double disabledOpacity READ disabledOpacity CONSTANT)

public:
    explicit ThemeTokens(QObject* parent = nullptr);

    [[nodiscard]] QColor ground() const { return appearance_.color(ColorToken::ground); }
    [[nodiscard]] QColor surface() const { return appearance_.color(ColorToken::surface); }
    [[nodiscard]] QColor raised() const { return appearance_.color(ColorToken::raised); }
    [[nodiscard]] QColor selection() const { return appearance_.color(ColorToken::selection); }
    [[nodiscard]] QColor line() const { return appearance_.color(ColorToken::line); }
    [[nodiscard]] QColor controlLine() const { return appearance_.color(ColorToken::controlLine); }
    [[nodiscard]] QColor text() const { return appearance_.color(ColorToken::text); }
    [[nodiscard]] QColor textSecondary() const { return appearance_.color(ColorToken::textSecondary); }
    [[nodiscard]] QColor accent() const { return appearance_.color(ColorToken::accent); }
    [[nodiscard]] QColor onAccent() const { return appearance_.color(ColorToken::onAccent); }
    [[nodiscard]] QColor focusRing() const { return appearance_.color(ColorToken::focusRing); }
    [[nodiscard]] QColor added() const { return appearance_.color(ColorToken::added); }
    [[nodiscard]] QColor freed() const { return appearance_.color(ColorToken::freed); }
    [[nodiscard]] QColor estimated() const { return appearance_.color(ColorToken::estimated); }
    [[nodiscard]] QColor warning() const { return appearance_.color(ColorToken::warning); }
    [[nodiscard]] QColor barTrack() const { return appearance_.color(ColorToken::barTrack); }
    [[nodiscard]] QColor filesTone() const { return appearance_.color(ColorToken::filesTone); }
    [[nodiscard]] QColor trashTone() const { return appearance_.color(ColorToken::trashTone); }
    [[nodiscard]] QColor notVisibleTone() const { return appearance_.color(ColorToken::notVisibleTone); }
    [[nodiscard]] QColor otherVolumesTone() const { return appearance_.color(ColorToken::otherVolumesTone); }
    /// From step -4 to step 4.
    [[nodiscard]] QVariantList netColors() const;
    [[nodiscard]] bool isDark() const { return appearance_.scheme() == ColorScheme::dark; }
    [[nodiscard]] bool isContrastIncreased() const { return appearance_.isContrastIncreased(); }

    [[nodiscard]] QFont wordmark() const { return appearance_.font(BRText::wordmark); }
    [[nodiscard]] QFont nav() const { return appearance_.font(BRText::nav); }
    [[nodiscard]] QFont pageTitle() const { return appearance_.font(BRText::pageTitle); }
    [[nodiscard]] QFont section() const { return appearance_.font(BRText::section); }
    [[nodiscard]] QFont label() const { return appearance_.font(BRText::label); }
    [[nodiscard]] QFont body() const { return appearance_.font(BRText::body); }
    [[nodiscard]] QFont bodyEmphasis() const { return appearance_.font(BRText::bodyEmphasis); }
    [[nodiscard]] QFont secondary() const { return appearance_.font(BRText::secondary); }
    [[nodiscard]] QFont caption() const { return appearance_.font(BRText::caption); }
    [[nodiscard]] QFont figureLarge() const { return appearance_.font(BRText::figureLarge); }
    [[nodiscard]] QFont figure() const { return appearance_.font(BRText::figure); }
    [[nodiscard]] QFont figureSmall() const { return appearance_.font(BRText::figureSmall); }
    [[nodiscard]] QFont figureInline() const { return appearance_.font(BRText::figureInline); }
    [[nodiscard]] double textScale() const { return brindle::textScale(appearance_.textSize()); }

    [[nodiscard]] bool isReducedMotion() const { return appearance_.isMotionReduced(); }
    /// Milliseconds of a movement.
    [[nodiscard]] int motion() const { return isReducedMotion() ? 0 : 150; }

    // Device-independent pixels.
    [[nodiscard]] static int gapTiny() { return 4; }
    [[nodiscard]] static int gapSmall() { return 8; }
    [[nodiscard]] static int gap() { return 16; }
    [[nodiscard]] static int gapLarge() { return 24; }
    [[nodiscard]] static int margin() { return 32; }
    [[nodiscard]] static int radius() { return 8; }
    [[nodiscard]] static int borderWidth() { return 1; }
    [[nodiscard]] static int focusWidth() { return 2; }
    /// Of a column of prose.
    [[nodiscard]] static int readingWidth() { return 560; }
    /// Of what cannot be used now.
    [[nodiscard]] static double disabledOpacity() { return 0.5; }

Q_SIGNALS:
    void colorsChanged();
    void textSizeChanged();
    void motionChanged();

private:
    Appearance& appearance_;
};

}  // namespace brindle
