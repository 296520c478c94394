#pragma once

#include "app/Settings.h"
#include "app/desktop/AppearanceWatch.h"
#include "ui/theme/Palette.h"
#include "ui/theme/TextRoles.h"

#include <QColor>
#include <QFont>
#include <QObject>

namespace brindle {

/// How the program looks now: what the user has set, and where that says so, what the system says. Theme, in
/// QML, shows it; the application's font follows.
///
/// There is one at a time, made after the application and before the first window. Thread: main.
class Appearance : public QObject {
    Q_OBJECT

public:
    explicit Appearance(const Settings& settings);
    ~Appearance() override;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;

    [[nodiscard]] static Appearance& current();

    void setSystem(const SystemAppearance& system);

    [[nodiscard]] ColorScheme scheme() const;
    [[nodiscard]] bool isContrastIncreased() const { return system_.isContrastIncreased; }
    [[nodiscard]] bool isMotionReduced() const { return system_.isMotionReduced; }
    [[nodiscard]] TextSize textSize() const { return settings_.textSize(); }

    [[nodiscard]] QColor color(ColorToken token) const;
    [[nodiscard]] QFont font(BRText role) const;

Q_SIGNALS:
    void colorsChanged();
    void textSizeChanged();
    void motionChanged();

private:
    const Settings& settings_;
    SystemAppearance system_;
};

}  // namespace brindle
