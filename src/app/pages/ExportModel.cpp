#include "app/pages/ExportModel.h"

#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/PlatformText.h"
#include "model/Translation.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace brindle {
namespace {

/// What is over before would only flash up.
constexpr std::chrono::milliseconds beforeItIsShown{500};

std::int64_t rowsOf(const ExportPlan& plan) {
    return plan.recordCount + plan.estimateFiles;
}

}  // namespace

ExportModel::ExportModel(AppModel& model, QObject* parent) : QObject(parent), exporter_(*model.exporter()) {
    patience_.setSingleShot(true);
    patience_.setInterval(beforeItIsShown);
    connect(&patience_, &QTimer::timeout, this, [this] {
        if (step_ == Writing) setStep(WritingLong);
    });
    connect(&exporter_, &StatementExporter::planChanged, this, &ExportModel::planChanged);
    connect(&exporter_, &StatementExporter::nothingToExport, this, [this](const QString& sentence) {
        nothing_ = sentence;
        setStep(NothingToExport);
    });
    connect(&exporter_, &StatementExporter::writingChanged, this, &ExportModel::writingChanged);
    connect(&exporter_, &StatementExporter::progressed, this, &ExportModel::progressed);
    connect(&exporter_, &StatementExporter::finishedChanged, this, [this] {
        if (!exporter_.finished()) return;
        finished_ = *exporter_.finished();
        setStep(Finished);
    });
    connect(&exporter_, &StatementExporter::failureChanged, this, [this] {
        if (exporter_.failure()) setStep(Failed);
    });
}

QString ExportModel::summary() const {
    return step_ == NothingToExport ? nothing_ : QString::fromStdString(exporter_.summary());
}

QString ExportModel::progressText() const {
    if (!exporter_.plan()) return {};
    const std::int64_t rows = rowsOf(*exporter_.plan());
    return pageText(translatedCount("{0} of {1} row written", "{0} of {1} rows written", rows),
                    groupedNumber(exporter_.rowsWritten()), groupedNumber(rows));
}

double ExportModel::progress() const {
    if (!exporter_.plan()) return 0;
    const auto rows = static_cast<double>(std::max<std::int64_t>(rowsOf(*exporter_.plan()), 1));
    return std::min(static_cast<double>(exporter_.rowsWritten()) / rows, 1.0);
}

QString ExportModel::finishedText() const {
    return translated("Your storage statement is ready.");
}

QString ExportModel::finishedPath() const {
    return shownName(finished_);
}

QString ExportModel::revealText() const {
    return translated(platformText::showInFiles);
}

QString ExportModel::failureText() const {
    return QString::fromStdString(exporter_.failure().value_or(std::string()));
}

void ExportModel::confirm() {
    if (step_ != Confirming) return;
    setStep(Choosing);
    Q_EMIT destinationRequested(exporter_.suggestedPath());
}

void ExportModel::write(const std::string& path) {
    if (step_ == Choosing) exporter_.write(path);
}

void ExportModel::dismiss() {
    const Step seen = std::exchange(step_, exporter_.isWriting() ? Writing : Idle);
    if (!exporter_.isWriting()) exporter_.dismissPlan();
    exporter_.dismissFinished();
    exporter_.dismissFailure();
    if (seen != step_) Q_EMIT stepChanged();
}

void ExportModel::reveal() {
    Q_EMIT revealRequested(finished_);
    dismiss();
}

void ExportModel::setStep(Step step) {
    step_ = step;
    Q_EMIT stepChanged();
    Q_EMIT progressed();
}

/// A plan that is gone is either written, or was dismissed.
void ExportModel::planChanged() {
    if (exporter_.plan()) setStep(Confirming);
}

void ExportModel::writingChanged() {
    if (exporter_.isWriting()) {
        setStep(Writing);
        patience_.start();
    } else {
        patience_.stop();
        setStep(Idle);  // until its end is told; a statement that was stopped has none
    }
}

}  // namespace brindle
