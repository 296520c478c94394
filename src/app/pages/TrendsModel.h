#pragma once

#include "app/AppModel.h"
#include "app/pages/ScopeModel.h"
#include "app/pages/TrendRows.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace brindle {

/// The Trends page: a range of days that ends with the selected one, as a chart or as a table, and one of its
/// days to be read. It follows the selection while it is the page that is shown.
/// Thread: main.
class TrendsModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(brindle::ScopeModel* scopes READ scopes CONSTANT)
    Q_PROPERTY(QStringList ranges READ ranges CONSTANT)
    Q_PROPERTY(int range READ range NOTIFY changed)
    Q_PROPERTY(bool showsTable READ showsTable WRITE setShowsTable NOTIFY showsTableChanged)
    Q_PROPERTY(QString period READ period NOTIFY changed)
    Q_PROPERTY(bool hasEarlier READ hasEarlier NOTIFY changed)
    Q_PROPERTY(bool hasLater READ hasLater NOTIFY changed)
    Q_PROPERTY(bool hasFigures READ hasFigures NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* days READ days CONSTANT)
    Q_PROPERTY(QAbstractListModel* dayMarks READ dayMarks CONSTANT)
    Q_PROPERTY(QAbstractListModel* changeLines READ changeLines CONSTANT)
    Q_PROPERTY(double zeroPlace READ zeroPlace NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* sizeLines READ sizeLines CONSTANT)
    Q_PROPERTY(QList<qreal> sizeShares READ sizeShares NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* figures READ figures CONSTANT)
    Q_PROPERTY(QString coverage READ coverage NOTIFY changed)
    Q_PROPERTY(QString comparison READ comparison NOTIFY changed)
    Q_PROPERTY(QStringList notes READ notes NOTIFY changed)
    Q_PROPERTY(int currentRow READ currentRow WRITE setCurrentRow NOTIFY currentChanged)
    Q_PROPERTY(QString currentDay READ currentDay NOTIFY currentChanged)
    Q_PROPERTY(QString currentWord READ currentWord NOTIFY currentChanged)
    Q_PROPERTY(QString currentState READ currentState NOTIFY currentChanged)
    Q_PROPERTY(QAbstractListModel* currentFigures READ currentFigures CONSTANT)
    Q_PROPERTY(QAbstractListModel* contributors READ contributors CONSTANT)

public:
    explicit TrendsModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] ScopeModel* scopes() { return &scopes_; }

    /// "Week", "Month", "Quarter".
    [[nodiscard]] QStringList ranges() const;
    [[nodiscard]] int range() const { return static_cast<int>(model_.selection()->range()); }
    [[nodiscard]] bool showsTable() const { return showsTable_; }
    void setShowsTable(bool shows);
    /// "Sun, Mar 1 – Sat, Mar 7".
    [[nodiscard]] const QString& period() const { return period_; }
    [[nodiscard]] bool hasEarlier() const { return hasEarlier_; }
    [[nodiscard]] bool hasLater() const { return model_.selection()->hasNextDay(); }
    /// Whether any day of the range is recorded or estimated.
    [[nodiscard]] bool hasFigures() const { return hasFigures_; }

    [[nodiscard]] TrendDayList* days() { return days_.get(); }
    [[nodiscard]] DayMarkList* dayMarks() { return dayMarks_.get(); }
    [[nodiscard]] ScaleList* changeLines() { return changeLines_.get(); }
    /// Where the zero line stands: 0 at the lower end of the chart of changes, 1 at the upper.
    [[nodiscard]] double zeroPlace() const { return zeroPlace_; }
    [[nodiscard]] ScaleList* sizeLines() { return sizeLines_.get(); }
    /// See SizeLine::shares.
    [[nodiscard]] const QList<qreal>& sizeShares() const { return sizeShares_; }

    [[nodiscard]] FigureList* figures() { return figures_.get(); }
    [[nodiscard]] const QString& coverage() const { return coverage_; }
    /// Which days the range is compared with, and on what their figures rest; or why with none.
    [[nodiscard]] const QString& comparison() const { return comparison_; }
    /// What is to be known of the figures: locations that came and went, a sentence each.
    [[nodiscard]] const QStringList& notes() const { return notes_; }

    /// The day that is read: its row in days().
    [[nodiscard]] int currentRow() const { return currentRow_; }
    /// Takes the nearest row that there is.
    void setCurrentRow(int row);
    [[nodiscard]] const QString& currentDay() const { return currentDay_; }
    /// See drawnState() and stateWord().
    [[nodiscard]] QString currentState() const;
    [[nodiscard]] QString currentWord() const;
    [[nodiscard]] FigureList* currentFigures() { return currentFigures_.get(); }

    /// The folders that contributed most to the range, largest first.
    [[nodiscard]] FolderList* contributors() { return model_.contributors(); }

    Q_INVOKABLE void chooseRange(int range);
    /// So many ranges later, or earlier when negative, in the bounds of what is kept and of today.
    Q_INVOKABLE void moveByRanges(int count);
    Q_INVOKABLE void showToday();
    /// The Activity page with the changes of the day, of the range, or of the range in a folder.
    Q_INVOKABLE void showDay(int row);
    Q_INVOKABLE void showRange();
    Q_INVOKABLE void showFolder(int row);

Q_SIGNALS:
    void changed();
    void showsTableChanged();
    void currentChanged();

private:
    enum class Changed { history, selection };
    struct Shown {
        LocalDay day;
        TrendRange range = TrendRange::week;
        LocationScope scope;

        bool operator==(const Shown&) const = default;
    };

    void update(Changed what);
    void takeChart(const Calendar& calendar);
    void takeFigures(const Calendar& calendar);
    void readCurrent();

    AppModel& model_;
    ScopeModel scopes_{model_};
    std::optional<Shown> shown_;  // absent while the history is another one than what is shown
    std::optional<Shown> read_;   // what currentRow() is a place in
    Trend trend_;
    bool showsTable_ = false;
    QString period_;
    bool hasEarlier_ = false;
    bool hasFigures_ = false;
    std::unique_ptr<TrendDayList> days_ = makeTrendDayList();
    std::unique_ptr<DayMarkList> dayMarks_ = makeDayMarkList();
    std::unique_ptr<ScaleList> changeLines_ = makeScaleList();
    double zeroPlace_ = 0;
    std::unique_ptr<ScaleList> sizeLines_ = makeScaleList();
    QList<qreal> sizeShares_;
    std::unique_ptr<FigureList> figures_ = makeFigureList();
    QString coverage_;
    QString comparison_;
    QStringList notes_;
    int currentRow_ = -1;
    QString currentDay_;
    std::unique_ptr<FigureList> currentFigures_ = makeFigureList();
};

}  // namespace brindle
