#pragma once

#include "analysis/ExplorerState.h"
#include "analysis/Trends.h"
#include "app/AppModes.h"
#include "model/Calendar.h"
#include "model/Change.h"

#include <QObject>
#include <functional>

namespace brindle {

/// What the user looks at.
/// Thread: main.
class Selection : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        brindle::Destination destination READ destination WRITE setDestination NOTIFY destinationChanged)
    Q_PROPERTY(brindle::LocationScope scope READ scope WRITE setScope NOTIFY scopeChanged)
    Q_PROPERTY(brindle::LocalDay day READ day WRITE setDay NOTIFY periodChanged)
    Q_PROPERTY(brindle::LocalDay firstDay READ firstDay NOTIFY periodChanged)
    Q_PROPERTY(bool hasNextDay READ hasNextDay NOTIFY periodChanged)
    Q_PROPERTY(brindle::LocalDay today READ today NOTIFY todayChanged)
    Q_PROPERTY(
        brindle::LocalDay calendarMonth READ calendarMonth WRITE setCalendarMonth NOTIFY calendarMonthChanged)
    Q_PROPERTY(brindle::TrendRange range READ range WRITE setRange NOTIFY rangeChanged)
    Q_PROPERTY(brindle::ExplorerState explorer READ explorer WRITE setExplorer NOTIFY explorerChanged)
    Q_PROPERTY(int searchFocusRequest READ searchFocusRequest NOTIFY searchFocusRequested)

public:
    /// Begins with `today`, of all locations.
    Selection(const LocalDay& today, std::function<Calendar()> calendar, QObject* parent = nullptr);

    [[nodiscard]] Destination destination() const { return destination_; }
    [[nodiscard]] const LocationScope& scope() const { return scope_; }
    [[nodiscard]] const LocalDay& today() const { return today_; }
    [[nodiscard]] const LocalDay& day() const { return last_; }
    /// The first day of the period that the Activity page lists, which ends with day(); the same for a day.
    [[nodiscard]] const LocalDay& firstDay() const { return first_; }
    /// The first day of the month that the calendar shows.
    [[nodiscard]] const LocalDay& calendarMonth() const { return month_; }
    [[nodiscard]] TrendRange range() const { return range_; }
    /// The first day of the range that ends with day().
    [[nodiscard]] LocalDay rangeFirst() const;
    [[nodiscard]] const ExplorerState& explorer() const { return explorer_; }
    /// Grows by one whenever the page's search field is to take the keyboard.
    [[nodiscard]] int searchFocusRequest() const { return searchFocusRequest_; }

    void setDestination(Destination destination);
    /// The explorer goes to the root of the location, or to the top above all locations, unless its folder
    /// lies in the new scope.
    void setScope(LocationScope scope);
    /// One day, today at the latest; the calendar shows its month.
    void setDay(const LocalDay& day);
    /// From `first` through `last`, today at the latest.
    void setPeriod(const LocalDay& first, const LocalDay& last);
    /// So many days later, or earlier when negative; a period becomes its last day first.
    void moveDay(int days);
    [[nodiscard]] bool hasNextDay() const { return last_ < today_; }
    void setCalendarMonth(const LocalDay& dayOfMonth);
    void setRange(TrendRange range);
    void setExplorer(ExplorerState state);
    void requestSearchFocus();

    /// Midnight has passed, or the clock or the time zone was set: who was looking at today goes on to the
    /// new one.
    void setToday(const LocalDay& today);

Q_SIGNALS:
    void destinationChanged();
    void scopeChanged();
    void periodChanged();
    void calendarMonthChanged();
    void rangeChanged();
    void explorerChanged();
    void searchFocusRequested();
    void todayChanged();

private:
    [[nodiscard]] LocalDay monthOf(const LocalDay& day) const { return calendar_().addingMonths(day, 0); }

    std::function<Calendar()> calendar_;
    Destination destination_ = Destination::overview;
    LocationScope scope_;
    LocalDay today_;
    LocalDay first_;
    LocalDay last_;
    LocalDay month_;
    TrendRange range_ = TrendRange::week;
    ExplorerState explorer_;
    int searchFocusRequest_ = 0;
};

}  // namespace brindle
