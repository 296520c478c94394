#pragma once

#include "ui/theme/TextRoles.h"

#include <QFont>

namespace brindle {

/// The fonts of all texts in one text size: Inter where it is installed, else the system's; figures with
/// digits that stand in columns. Thread: main, after the application is there.
class BRFontModifier {
public:
    explicit BRFontModifier(TextSize size) : scale_(textScale(size)) {}

    [[nodiscard]] QFont font(BRText role) const;

private:
    double scale_;
};

}  // namespace brindle
