#include "app/StatementExporter.h"

#include "export/StatementExport.h"
#include "export/StatementsFolder.h"
#include "model/FileNameText.h"
#include "platform/Mounts.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/UserFolders.h"

#include <chrono>
#include <utility>

namespace brindle {
namespace {

/// Often enough to be seen moving.
constexpr std::chrono::milliseconds betweenProgress{100};

}  // namespace

struct StatementExporter::Planned {
    Subject subject;
    std::optional<ExportPlan> plan;
    std::string suggestedPath;
};

StatementExporter::~StatementExporter() {
    stop();
}

void StatementExporter::prepare(Subject subject, const LocalDay& first, const LocalDay& last,
                                const LocationScope& scope) {
    if (isWriting()) return;
    const int asked = ++plansAsked_;
    const auto make = [subject = std::move(subject), first, last, scope] {
        Planned planned{.subject = subject,
                        .plan = planExport(*subject.source, first, last, scope, subject.snapshot.isExample),
                        .suggestedPath = {}};
        if (!planned.plan) return planned;
        const auto exports =
            subject.snapshot.isExample ? std::vector<std::string>() : subject.records.recent();
        planned.suggestedPath =
            joinedPath(statementsFolder(exports, documentsFolder(), MountTable::current()),
                       suggestedFileName(*planned.plan));
        return planned;
    };
    background_.run(
        make,
        [this, asked](Planned planned) {
            if (asked == plansAsked_ && !isWriting()) take(std::move(planned));
        },
        [this](const std::exception& error) { fail(error); });
}

void StatementExporter::take(Planned planned) {
    subject_ = std::move(planned.subject);
    plan_ = std::move(planned.plan);
    suggestedPath_ = std::move(planned.suggestedPath);
    Q_EMIT planChanged();
    if (!plan_) Q_EMIT nothingToExport(QString::fromStdString(brindle::nothingToExport()));
}

std::string StatementExporter::summary() const {
    return plan_ ? planSummary(*plan_, subject_->calendar) : std::string();
}

void StatementExporter::write(const std::string& destination) {
    if (!plan_ || isWriting()) return;
    writing_ = std::make_shared<CancellationFlag>();
    rowsWritten_ = 0;
    dismissFinished();
    dismissFailure();
    Q_EMIT writingChanged();
    using Steady = std::chrono::steady_clock;
    const auto tell = [this, next = Steady::now()](std::int64_t rows) mutable {
        if (Steady::now() < next) return;
        next = Steady::now() + betweenProgress;
        background_.post([this, rows] {
            rowsWritten_ = rows;
            Q_EMIT progressed();
        });
    };
    const auto writing = writing_;
    const auto work = [subject = *subject_, plan = *plan_, destination, writing, tell] {
        exportStatement(plan, openOutputFile(destination), *subject.source, subject.snapshot,
                        subject.calendar, *writing, tell);
        if (plan.isExample) return;
        try {
            subject.records.add(destination);
        } catch (const std::exception&) {
            // The statement is in its place; that the history cannot remember where is no failure of it.
        }
    };
    background_.run(
        work,
        [this, writing, destination] {
            end(writing);
            finished_ = destination;
            Q_EMIT finishedChanged();
        },
        [this, writing](const std::exception& error) {
            end(writing);
            if (dynamic_cast<const Cancelled*>(&error) == nullptr) fail(error);
        });
}

void StatementExporter::stop() {
    if (writing_) writing_->set();
}

void StatementExporter::end(const std::shared_ptr<CancellationFlag>& writing) {
    if (writing_ != writing) return;
    writing_.reset();
    dismissPlan();
    Q_EMIT writingChanged();
}

void StatementExporter::fail(const std::exception& error) {
    failure_ = exportFailure(fileNameText(error.what()) + ".");
    Q_EMIT failureChanged();
}

void StatementExporter::dismissPlan() {
    if (std::exchange(plan_, std::nullopt)) Q_EMIT planChanged();
}

void StatementExporter::dismissFinished() {
    if (std::exchange(finished_, std::nullopt)) Q_EMIT finishedChanged();
}

void StatementExporter::dismissFailure() {
    if (std::exchange(failure_, std::nullopt)) Q_EMIT failureChanged();
}

}  // namespace brindle
