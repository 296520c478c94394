#include "app/Selection.h"

#include <algorithm>
#include <utility>

namespace brindle {

Selection::Selection(const LocalDay& today, std::function<Calendar()> calendar, QObject* parent)
    : QObject(parent),
      calendar_(std::move(calendar)),
      today_(today),
      first_(today),
      last_(today),
      month_(monthOf(today)) {}

LocalDay Selection::rangeFirst() const {
    return calendar_().addingDays(last_, 1 - dayCount(range_));
}

void Selection::setDestination(Destination destination) {
    if (std::exchange(destination_, destination) != destination) Q_EMIT destinationChanged();
}

void Selection::setScope(LocationScope scope) {
    if (scope_ == scope) return;
    scope_ = std::move(scope);
    if (!explorer_.folder || !scope_.location || explorer_.folder->locationID != *scope_.location) {
        ExplorerState explorer = explorer_;
        explorer.folder =
            scope_.location ? std::optional(FolderRef{*scope_.location, {}}) : std::optional<FolderRef>();
        explorer.page = 0;
        setExplorer(std::move(explorer));
    }
    Q_EMIT scopeChanged();
}

void Selection::setDay(const LocalDay& day) {
    setPeriod(day, day);
}

void Selection::setPeriod(const LocalDay& first, const LocalDay& last) {
    const LocalDay end = std::min(last, today_);
    const LocalDay begin = std::min(first, end);
    setCalendarMonth(end);
    if (begin == first_ && end == last_) return;
    first_ = begin;
    last_ = end;
    ExplorerState explorer = explorer_;
    explorer.page = 0;
    setExplorer(std::move(explorer));
    Q_EMIT periodChanged();
}

void Selection::moveDay(int days) {
    setDay(first_ == last_ ? calendar_().addingDays(last_, days) : last_);
}

void Selection::setCalendarMonth(const LocalDay& dayOfMonth) {
    const LocalDay month = monthOf(dayOfMonth);
    if (std::exchange(month_, month) != month) Q_EMIT calendarMonthChanged();
}

void Selection::setRange(TrendRange range) {
    if (std::exchange(range_, range) != range) Q_EMIT rangeChanged();
}

void Selection::setExplorer(ExplorerState state) {
    if (explorer_ == state) return;
    explorer_ = std::move(state);
    Q_EMIT explorerChanged();
}

void Selection::requestSearchFocus() {
    ++searchFocusRequest_;
    Q_EMIT searchFocusRequested();
}

void Selection::setToday(const LocalDay& today) {
    if (today == today_) return;
    const bool followsToday = last_ == today_;
    const bool isDay = first_ == last_;
    today_ = today;
    if (followsToday && isDay)
        setDay(today);
    else if (today < last_)
        setPeriod(first_, today);  // the clock was set back
    Q_EMIT todayChanged();
}

}  // namespace brindle
