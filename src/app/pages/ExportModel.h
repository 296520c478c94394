#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <string>

namespace brindle {

/// What the dialogs of an export show, one after the other: the plan to confirm, the question where to save
/// it, its progress when that takes long, and its end.
/// Thread: main.
class ExportModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(Step step READ step NOTIFY stepChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY stepChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressed)
    Q_PROPERTY(double progress READ progress NOTIFY progressed)
    Q_PROPERTY(QString finishedText READ finishedText CONSTANT)
    Q_PROPERTY(QString finishedPath READ finishedPath NOTIFY stepChanged)
    Q_PROPERTY(QString revealText READ revealText CONSTANT)
    Q_PROPERTY(QString failureText READ failureText NOTIFY stepChanged)

public:
    enum Step {
        Idle,
        Confirming,
        Choosing,  // where to save it, in the system's dialog
        Writing,   // nothing is shown: it may be over in a moment
        WritingLong,
        Finished,
        Failed,
        NothingToExport,
    };
    Q_ENUM(Step)

    explicit ExportModel(AppModel& model, QObject* parent = nullptr);

    [[nodiscard]] Step step() const { return step_; }
    /// What the statement will hold; of NothingToExport the sentence that says so.
    [[nodiscard]] QString summary() const;
    /// "1,200 of 41,495 rows written"; the statement may come to have more or fewer rows.
    [[nodiscard]] QString progressText() const;
    [[nodiscard]] double progress() const;  // 0 to 1
    [[nodiscard]] QString finishedText() const;
    [[nodiscard]] QString finishedPath() const;
    [[nodiscard]] QString revealText() const;
    [[nodiscard]] QString failureText() const;

    /// The plan is right: asks where to save it.
    Q_INVOKABLE void confirm();
    /// Closes whatever is shown. Writing goes on.
    Q_INVOKABLE void dismiss();
    Q_INVOKABLE void stop() { exporter_.stop(); }
    Q_INVOKABLE void reveal();

    /// The answer to destinationRequested(): an absolute path, or none.
    void write(const std::string& path);
    void cancelChoosing() { dismiss(); }

Q_SIGNALS:
    void stepChanged();
    void progressed();
    /// The user is to be asked where to save the statement, beginning with this path.
    void destinationRequested(const std::string& suggestedPath);
    /// A file is to be shown in the file manager.
    void revealRequested(const std::string& path);

private:
    void setStep(Step step);
    void planChanged();
    void writingChanged();

    StatementExporter& exporter_;
    Step step_ = Idle;
    QString nothing_;
    std::string finished_;
    QTimer patience_;
};

}  // namespace brindle
