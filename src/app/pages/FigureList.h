#pragma once

#include "app/ListModel.h"
#include "model/DayState.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// How a figure is coloured, in the order that QML knows.
enum class FigureTone { neutral, added, freed, estimated };

/// One amount of a page with its caption.
struct FigureRow {
    QString caption;
    QString amount;
    QString exact;  // to the byte
    FigureTone tone = FigureTone::neutral;
    QString before;  // the same figure of the days before; empty when there is none

    bool operator==(const FigureRow&) const = default;
};

using FigureList = ListModel<FigureRow, QString>;

[[nodiscard]] std::unique_ptr<FigureList> makeFigureList();

/// Net change, added and freed.
[[nodiscard]] std::vector<FigureRow> changeFigures(const ChangeTotals& totals);
/// "About 1.2 GB", on its own: it is in no sum with measured figures.
[[nodiscard]] FigureRow estimateFigure(const EstimateTotals& totals);
[[nodiscard]] FigureRow sizeFigure(const std::string& caption, std::int64_t bytes);
/// What is known of the day; nothing of a day without figures.
[[nodiscard]] std::vector<FigureRow> dayFigureRows(const DayState& state);

}  // namespace brindle
