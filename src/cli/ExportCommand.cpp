#include "cli/ExportCommand.h"

#include "checks/Failures.h"
#include "cli/PlaceWord.h"
#include "export/ExportPlan.h"
#include "export/StatementExport.h"
#include "export/StatementsFolder.h"
#include "model/FileNameText.h"
#include "model/Translation.h"
#include "platform/Interruption.h"
#include "platform/Mounts.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/UserFolders.h"
#include "store/SQLiteError.h"

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

namespace brindle {
namespace {

constexpr const char* standardOutput = "-";

/// Where the statement goes: an absolute path, or "-".
std::string destinationOf(const ExportOptions& options, const ExportPlan& plan, const Context& context) {
    if (options.output == standardOutput) return options.output;
    if (!options.output.empty()) return standardizedPath(options.output);
    std::vector<std::string> exports;
    if (!plan.isExample) exports = context.openHistory().recentExports().get();
    return joinedPath(statementsFolder(exports, documentsFolder(), MountTable::current()),
                      suggestedFileName(plan));
}

/// Shows how far a long export is, a few times a second.
ExportProgress progressOf(const ExportPlan& plan, Output& output) {
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds pause(200);
    return [&output, all = plan.recordCount, next = Clock::now() + pause](std::int64_t rows) mutable {
        if (Clock::now() < next) return;
        output.exporting(rows, std::max(rows, all));
        next = Clock::now() + pause;
    };
}

/// The statement is in its place, so that a history that cannot remember it is no failure. A device or a pipe
/// is no place to find one again.
void remember(const Context& context, const std::string& destination) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(destination, none)) return;
    try {
        context.openHistory().recordExport(destination, systemNow()).get();
    } catch (const SQLiteError& error) {
        context.output.sentence(failureSentence(error, context.dataDirectory));
    }
}

}  // namespace

ExitCode runExport(const Context& context, const ExportOptions& options) {
    const bool isToStandardOutput = options.output == standardOutput;
    if (isToStandardOutput && context.asJson)
        throw UsageError(translated("--json and a statement can't both go to standard output."));
    CancellationFlag cancellation;
    const Interruption interruption([&cancellation] { cancellation.set(); });

    const auto source = context.openSource();
    const HistorySnapshot snapshot = source->snapshot().get();
    const Period period = periodOf(options.period, context.calendar, snapshot.today);
    const auto plan = planExport(*source, period.first, period.last, scopeNamed(options.location, snapshot),
                                 snapshot.isExample);
    if (!plan) {
        if (context.asJson)
            context.output.json({{"path", nullptr}, {"rows", 0}, {"summary", nothingToExport()}});
        else
            context.output.sentence(nothingToExport());
        return ExitCode::nothingFound;
    }

    const std::string destination = destinationOf(options, *plan, context);
    std::int64_t rows = 0;
    try {
        rows = exportStatement(*plan, isToStandardOutput ? openStandardOutput() : openOutputFile(destination),
                               *source, snapshot, context.calendar, cancellation,
                               progressOf(*plan, context.output));
    } catch (const std::system_error& error) {
        throw std::runtime_error(exportFailure(fileNameText(error.what()) + "."));
    }

    const std::string summary = planSummary(*plan, context.calendar);
    context.output.endProgress();
    if (isToStandardOutput) {
        context.output.sentence(summary);
        return ExitCode::success;
    }
    if (!plan->isExample) remember(context, destination);
    if (context.asJson) {
        context.output.json({{"path", destination}, {"rows", rows}, {"summary", summary}});
    } else {
        context.output.line(summary);
        context.output.line(
            filled(translated("Your storage statement is ready: {}"), fileNameText(destination)));
    }
    return ExitCode::success;
}

}  // namespace brindle
