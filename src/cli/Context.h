#pragma once

#include "cli/Output.h"
#include "example/ExampleHistory.h"
#include "model/Calendar.h"
#include "model/Translation.h"
#include "settings/Preferences.h"
#include "store/HistoryStore.h"
#include "store/StoredHistory.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace brindle {

/// A command line that makes no sense. what() is the sentence for the user.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What every command works with.
struct Context {
    std::string dataDirectory;  // empty for the example history, which lies nowhere
    bool asJson = false;
    bool isExample = false;
    Output& output;
    Calendar calendar = Calendar::current();

    /// Throws UsageError for the example history, which no store holds.
    [[nodiscard]] HistoryStore openHistory() const {
        if (isExample) throw UsageError(translated("This command can't show the example history."));
        return HistoryStore(dataDirectory);
    }

    /// Where commands that only read get the history from. `days`: as many as its snapshot needs to cover.
    [[nodiscard]] std::unique_ptr<HistorySource> openSource(int days = keptDays) const {
        if (isExample) return std::make_unique<ExampleHistory>(calendar);
        return std::make_unique<StoredHistory>(std::make_shared<HistoryStore>(dataDirectory), calendar,
                                               systemNow, days);
    }

    /// The user's settings as they are now; says so when they could not all be read.
    [[nodiscard]] Preferences preferences() const {
        const StoredSettings stored = SettingsFile::ofUser().read();
        if (stored.note) output.sentence(*stored.note);
        return readPreferences(SettingValues(stored.values));
    }
};

}  // namespace brindle
