#pragma once

#include "app/pages/ActivityTexts.h"
#include "app/pages/ExplorerModel.h"
#include "app/pages/ScopeModel.h"

#include <QObject>
#include <QString>

namespace brindle {

/// A day or a period: its figures, and the changes behind them.
/// Thread: main.
class ActivityModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(brindle::ScopeModel* scopes READ scopes CONSTANT)
    Q_PROPERTY(brindle::ExplorerModel* explorer READ explorer CONSTANT)
    Q_PROPERTY(QString title READ title NOTIFY periodChanged)
    Q_PROPERTY(bool isToday READ isToday NOTIFY periodChanged)
    Q_PROPERTY(bool hasNextDay READ hasNextDay NOTIFY periodChanged)
    Q_PROPERTY(bool hasFigures READ hasFigures NOTIFY figuresChanged)
    Q_PROPERTY(bool isPartial READ isPartial NOTIFY figuresChanged)
    Q_PROPERTY(QString net READ net NOTIFY figuresChanged)
    Q_PROPERTY(QString netExact READ netExact NOTIFY figuresChanged)
    Q_PROPERTY(QString added READ added NOTIFY figuresChanged)
    Q_PROPERTY(QString addedExact READ addedExact NOTIFY figuresChanged)
    Q_PROPERTY(QString freed READ freed NOTIFY figuresChanged)
    Q_PROPERTY(QString freedExact READ freedExact NOTIFY figuresChanged)
    Q_PROPERTY(QString files READ files NOTIFY figuresChanged)
    Q_PROPERTY(QString coverage READ coverage NOTIFY figuresChanged)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changesChanged)
    Q_PROPERTY(QString estimated READ estimated NOTIFY changesChanged)
    Q_PROPERTY(QString estimatedExact READ estimatedExact NOTIFY changesChanged)

public:
    explicit ActivityModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] ScopeModel* scopes() { return &scopes_; }
    [[nodiscard]] ExplorerModel* explorer() { return &explorer_; }

    [[nodiscard]] QString title() const;
    /// Whether the period is today alone.
    [[nodiscard]] bool isToday() const;
    [[nodiscard]] bool hasNextDay() const { return model_.selection()->hasNextDay(); }

    /// Whether any day of the period is recorded. The figures are empty unless it is.
    [[nodiscard]] bool hasFigures() const { return range_.totals.has_value(); }
    /// Whether some recorded day of the period leaves something out.
    [[nodiscard]] bool isPartial() const { return range_.days.partial > 0; }
    [[nodiscard]] QString net() const;
    [[nodiscard]] QString netExact() const;
    [[nodiscard]] QString added() const;
    [[nodiscard]] QString addedExact() const;
    [[nodiscard]] QString freed() const;
    [[nodiscard]] QString freedExact() const;
    [[nodiscard]] QString files() const;
    /// What the figures rest on, where that is not every day and every folder.
    [[nodiscard]] QString coverage() const;

    /// Where most of the change lies, in a sentence; empty until the changes are read.
    [[nodiscard]] QString explanation() const;
    /// What file dates say of the period; empty when they say nothing. Never a part of the figures.
    [[nodiscard]] QString estimated() const;
    [[nodiscard]] QString estimatedExact() const;

    /// A period becomes its last day.
    Q_INVOKABLE void moveDay(int days) { model_.selection()->moveDay(days); }
    Q_INVOKABLE void showToday() { model_.selection()->setDay(model_.selection()->today()); }
    Q_INVOKABLE void exportStatement() { model_.prepareExport(); }

Q_SIGNALS:
    void periodChanged();
    void figuresChanged();
    void changesChanged();

private:
    [[nodiscard]] PeriodOf period() const;
    void update();

    AppModel& model_;
    ScopeModel scopes_;
    ExplorerModel explorer_;
    RangeFigures range_;
};

}  // namespace brindle
