#pragma once

#include "app/Background.h"
#include "export/ExportPlan.h"
#include "model/Calendar.h"
#include "model/Cancellation.h"
#include "model/HistorySource.h"

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// The log of exported files, as the exporter uses it, on a thread that may wait.
struct ExportRecords {
    std::function<std::vector<std::string>()> recent;  // paths, latest first
    std::function<void(const std::string& path)> add;
};

/// Takes the user from "Export Statement…" to a finished file: a plan to confirm, then the writing, then its
/// end. The dialogs show what is here, and clear what the user has seen.
/// Thread: main.
class StatementExporter : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isWriting READ isWriting NOTIFY writingChanged)
    Q_PROPERTY(qint64 rowsWritten READ rowsWritten NOTIFY progressed)

public:
    /// What is exported: a history with the locations and the time zone of its rows.
    struct Subject {
        std::shared_ptr<HistorySource> source;
        HistorySnapshot snapshot;
        Calendar calendar;
        ExportRecords records;  // of an example neither is called
    };

    explicit StatementExporter(QObject* parent = nullptr) : QObject(parent) {}

    /// Stops what is being written and waits for that.
    ~StatementExporter() override;

    /// Plans the statement of the days and the scope. Ends with planned() or nothingToExport(), unless
    /// another call has overtaken this one; failed() when the history cannot be read.
    void prepare(Subject subject, const LocalDay& first, const LocalDay& last, const LocationScope& scope);

    /// Present while the confirmation is shown.
    [[nodiscard]] const std::optional<ExportPlan>& plan() const { return plan_; }
    /// What the confirmation says, and the path that the save dialog begins with.
    [[nodiscard]] std::string summary() const;
    [[nodiscard]] const std::string& suggestedPath() const { return suggestedPath_; }

    /// Writes the plan's statement to an absolute path, in the background.
    void write(const std::string& destination);
    [[nodiscard]] bool isWriting() const { return writing_ != nullptr; }
    [[nodiscard]] std::int64_t rowsWritten() const { return rowsWritten_; }
    /// What was there before stays, and nothing is said.
    void stop();

    /// The statement written last, and why the last one failed, until the user has seen it.
    [[nodiscard]] const std::optional<std::string>& finished() const { return finished_; }
    [[nodiscard]] const std::optional<std::string>& failure() const { return failure_; }
    void dismissPlan();
    void dismissFinished();
    void dismissFailure();

Q_SIGNALS:
    void planChanged();
    /// The sentence for the user.
    void nothingToExport(const QString& sentence);
    void writingChanged();
    void progressed();
    void finishedChanged();
    void failureChanged();

private:
    struct Planned;

    void take(Planned planned);
    void end(const std::shared_ptr<CancellationFlag>& writing);
    void fail(const std::exception& error);

    std::optional<Subject> subject_;
    std::optional<ExportPlan> plan_;
    std::string suggestedPath_;
    int plansAsked_ = 0;
    std::shared_ptr<CancellationFlag> writing_;  // null while nothing is written
    std::int64_t rowsWritten_ = 0;
    std::optional<std::string> finished_;
    std::optional<std::string> failure_;
    Background background_;  // last, so that it ends first
};

}  // namespace brindle
