#pragma once

#include "app/AppModel.h"
#include "app/LatestAnswer.h"
#include "app/pages/CalendarRows.h"
#include "app/pages/FigureList.h"
#include "app/pages/ScopeModel.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace brindle {

/// The Storage history page: the calendar of a month, and the statement of the selected day. It follows the
/// selection while it is the page that is shown.
/// Thread: main.
class StorageHistoryModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(brindle::ScopeModel* scopes READ scopes CONSTANT)
    Q_PROPERTY(QString month READ month NOTIFY changed)
    Q_PROPERTY(QStringList weekdayNames READ weekdayNames NOTIFY changed)
    Q_PROPERTY(int weekCount READ weekCount NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* days READ days CONSTANT)
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY changed)
    Q_PROPERTY(bool hasPreviousMonth READ hasPreviousMonth NOTIFY changed)
    Q_PROPERTY(bool hasNextMonth READ hasNextMonth NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* legend READ legend CONSTANT)
    Q_PROPERTY(QString legendBegin READ legendBegin NOTIFY changed)
    Q_PROPERTY(QString legendEnd READ legendEnd NOTIFY changed)
    Q_PROPERTY(bool hasMonthFigures READ hasMonthFigures NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* monthFigures READ monthFigures CONSTANT)
    Q_PROPERTY(QString monthCoverage READ monthCoverage NOTIFY changed)
    Q_PROPERTY(QString day READ day NOTIFY changed)
    Q_PROPERTY(bool isToday READ isToday NOTIFY changed)
    Q_PROPERTY(QString dayState READ dayState NOTIFY changed)
    Q_PROPERTY(QString dayWord READ dayWord NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* dayFigures READ dayFigures CONSTANT)
    Q_PROPERTY(QString daySentence READ daySentence NOTIFY daySentenceChanged)
    Q_PROPERTY(QStringList dayNotes READ dayNotes NOTIFY changed)
    Q_PROPERTY(QString dayEstimate READ dayEstimate NOTIFY changed)
    Q_PROPERTY(bool hasChanges READ hasChanges NOTIFY changed)

public:
    explicit StorageHistoryModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] ScopeModel* scopes() { return &scopes_; }

    /// "March 2026".
    [[nodiscard]] const QString& month() const { return month_; }
    /// In the order of the locale's week.
    [[nodiscard]] const QStringList& weekdayNames() const { return weekdayNames_; }
    /// The rows that the month takes.
    [[nodiscard]] int weekCount() const { return weekCount_; }
    [[nodiscard]] CalendarDayList* days() { return days_.get(); }
    /// The place of the selected day in days(); negative when it is in another month.
    [[nodiscard]] int selectedRow() const { return selectedRow_; }
    [[nodiscard]] bool hasPreviousMonth() const { return hasPreviousMonth_; }
    [[nodiscard]] bool hasNextMonth() const { return hasNextMonth_; }
    [[nodiscard]] LegendList* legend() { return legend_.get(); }
    /// What stands at the ends of the legend: the amounts from which its last colours are given, or a word
    /// where no day has such a change.
    [[nodiscard]] QString legendBegin() const;
    [[nodiscard]] QString legendEnd() const;
    [[nodiscard]] bool hasMonthFigures() const { return monthFigures_->rowCount() > 0; }
    /// Of the month's recorded days, and its estimated ones for themselves.
    [[nodiscard]] FigureList* monthFigures() { return monthFigures_.get(); }
    [[nodiscard]] const QString& monthCoverage() const { return monthCoverage_; }

    /// The selected day: "Saturday, March 7, 2026".
    [[nodiscard]] const QString& day() const { return day_; }
    [[nodiscard]] bool isToday() const { return !model_.selection()->hasNextDay(); }
    /// See drawnState() and stateWord().
    [[nodiscard]] const QString& dayState() const { return dayState_; }
    [[nodiscard]] const QString& dayWord() const { return dayWord_; }
    [[nodiscard]] FigureList* dayFigures() { return dayFigures_.get(); }
    /// Where the day's change lies; empty without one, and until it is read.
    [[nodiscard]] const QString& daySentence() const { return daySentence_; }
    [[nodiscard]] const QStringList& dayNotes() const { return dayNotes_; }
    /// What file dates put on a day that is recorded as well; empty when nothing.
    [[nodiscard]] const QString& dayEstimate() const { return dayEstimate_; }
    /// Whether there are changes to list and to export, be they estimated.
    [[nodiscard]] bool hasChanges() const { return hasChanges_; }

    /// Selects a day of the calendar, unless it is yet to come.
    Q_INVOKABLE void selectRow(int row);
    Q_INVOKABLE void moveByDays(int count);
    Q_INVOKABLE void moveByMonths(int count);
    /// To the first day of the selected one's week that is in its month, or to the last.
    Q_INVOKABLE void moveToWeekStart() { moveInWeek(true); }
    Q_INVOKABLE void moveToWeekEnd() { moveInWeek(false); }
    Q_INVOKABLE void showToday();
    /// The Activity page with the selected day's changes.
    Q_INVOKABLE void showChanges();
    Q_INVOKABLE void exportDay();

Q_SIGNALS:
    void changed();
    void daySentenceChanged();

private:
    enum class Changed { history, selection };
    struct Shown {
        LocalDay day;
        LocalDay month;
        LocationScope scope;

        bool operator==(const Shown&) const = default;
    };

    void update(Changed what);
    void takeMonth(const Calendar& calendar);
    void takeDay(const Calendar& calendar);
    void askForSentence();
    void setSentence(const QString& sentence);
    void moveInWeek(bool toStart);

    AppModel& model_;
    ScopeModel scopes_{model_};
    std::optional<Shown> shown_;  // absent while the history is another one than what is shown
    std::optional<std::pair<LocalDay, LocationScope>> described_;  // what the sentence is of
    QString month_;
    QStringList weekdayNames_;
    int weekCount_ = 0;
    std::unique_ptr<CalendarDayList> days_ = makeCalendarDayList();
    int selectedRow_ = -1;
    bool hasPreviousMonth_ = false;
    bool hasNextMonth_ = false;
    std::unique_ptr<LegendList> legend_ = makeLegendList();
    std::unique_ptr<FigureList> monthFigures_ = makeFigureList();
    QString monthCoverage_;
    QString day_;
    QString dayState_;
    QString dayWord_;
    std::unique_ptr<FigureList> dayFigures_ = makeFigureList();
    QString daySentence_;
    QStringList dayNotes_;
    QString dayEstimate_;
    bool hasChanges_ = false;
    LatestAnswer<std::string> sentence_;  // last, so that it ends first
};

}  // namespace brindle
