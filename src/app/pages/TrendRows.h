#pragma once

#include "analysis/ChartScale.h"
#include "analysis/Trends.h"
#include "app/ListModel.h"
#include "app/pages/FigureList.h"

#include <QList>
#include <QString>
#include <memory>
#include <vector>

// The lists of the Trends page. Their rows are told apart by their place, so that views keep their bars when
// the range moves.

namespace brindle {

/// A day of the range, as the chart draws it and as the table tells it.
struct TrendDayRow {
    int place = 0;  // in the range, from 0
    LocalDay day;
    QString label;  // "Sat, Mar 7"
    QString state;  // see drawnState()
    QString word;
    QString added;  // like those below, empty when unknown; of an estimated day the only one
    QString freed;
    QString net;
    QString tracked;
    double addedLength = 0;  // of its bar, as a share of the chart's height
    double freedLength = 0;
    QString reading;  // for a screen reader

    bool operator==(const TrendDayRow&) const = default;
};

/// A line of a chart's scale.
struct ScaleRow {
    double place = 0;  // 0 at the lower end, 1 at the upper
    QString text;
    bool isZero = false;

    bool operator==(const ScaleRow&) const = default;
};

/// A day that is named below the chart.
struct DayMarkRow {
    int place = 0;    // of the day in the range
    QString weekday;  // empty where there is no room for it
    QString date;

    bool operator==(const DayMarkRow&) const = default;
};

using TrendDayList = ListModel<TrendDayRow, int>;
using ScaleList = ListModel<ScaleRow, double>;
using DayMarkList = ListModel<DayMarkRow, int>;

[[nodiscard]] std::unique_ptr<TrendDayList> makeTrendDayList();
[[nodiscard]] std::unique_ptr<ScaleList> makeScaleList();
[[nodiscard]] std::unique_ptr<DayMarkList> makeDayMarkList();

/// What the chart of changes is measured by.
[[nodiscard]] ChartScale changeScaleOf(const Trend& trend);
[[nodiscard]] std::vector<TrendDayRow> trendDayRows(const Trend& trend, const ChartScale& scale,
                                                    const Calendar& calendar);

/// The line of tracked sizes with its scale, which has no lines when no size is known.
struct SizeLine {
    std::vector<ScaleRow> scale;
    QList<qreal> shares;  // of the chart's height, one a day; negative where no size is known
};
[[nodiscard]] SizeLine sizeLineOf(const Trend& trend);

[[nodiscard]] std::vector<ScaleRow> scaleRows(const ChartScale& scale);
/// Every day of a week; of a longer range the first day of each week.
[[nodiscard]] std::vector<DayMarkRow> dayMarkRows(const Trend& trend, const Calendar& calendar);

/// The figures of the range, each with that of the range before it, and its estimates for themselves.
[[nodiscard]] std::vector<FigureRow> rangeFigureRows(const Trend& trend);

}  // namespace brindle
