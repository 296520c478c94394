#include "cli/EstimatesCommand.h"

#include "checks/RunLock.h"
#include "model/Translation.h"
#include "settings/Preferences.h"
#include "settings/WindowLock.h"

#include <nlohmann/json.hpp>

namespace brindle {
namespace {

/// Stores the setting. What was estimated goes with it, so that no page shows it again before new ones are
/// made.
void switchEstimates(const Context& context, bool wanted) {
    const RunLock lock =
        RunLockSource(context.dataDirectory).take(RunLock::WhenTaken::refuse, CancellationFlag());
    if (isWindowRunning(context.dataDirectory))
        throw RunLocked(translated("Brindle's window is open. Change this in its settings."));
    HistoryStore store = context.openHistory();
    if (const auto note = writePreference(SettingsFile::ofUser(), preferenceKeys::showsEstimates, wanted))
        context.output.sentence(*note);
    if (!wanted) store.clearEstimates().get();
}

const char* sentenceFor(bool isOn, bool isNew) {
    if (isNew)
        return isOn ? translated("Estimates of earlier history are on. The next check makes them.")
                    : translated(
                          "Estimates of earlier history are off, and those that were made are removed.");
    return isOn ? translated("Estimates of earlier history are on.")
                : translated("Estimates of earlier history are off.");
}

}  // namespace

ExitCode runEstimates(const Context& context, std::optional<bool> wanted) {
    if (wanted) switchEstimates(context, *wanted);
    const bool isOn = wanted ? *wanted : context.preferences().showsEstimates;
    if (context.asJson)
        context.output.json({{"showsEstimates", isOn}});
    else
        context.output.line(sentenceFor(isOn, wanted.has_value()));
    return ExitCode::success;
}

}  // namespace brindle
