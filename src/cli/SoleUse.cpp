#include "cli/SoleUse.h"

#include "model/Translation.h"
#include "settings/WindowLock.h"

namespace brindle {

SoleUse::SoleUse(const std::string& dataDirectory)
    : run_(RunLockSource(dataDirectory).take(RunLock::WhenTaken::refuse, CancellationFlag())),
      window_(tryToTakeWindowLock(dataDirectory)) {
    if (!window_) throw RunLocked(translated("Brindle's window is open. Quit it and try again."));
    try {
        lease_.emplace(HistoryFiles(dataDirectory));
    } catch (const HistoryInUse& error) {
        throw RunLocked(error.what());
    }
}

}  // namespace brindle
