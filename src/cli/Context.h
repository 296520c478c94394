#pragma once

#include "cli/Output.h"
#include "model/Calendar.h"
#include "settings/Preferences.h"
#include "store/HistoryStore.h"
#include "store/StoredHistory.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace brindle {

/// What every command works with.
struct Context {
    std::string dataDirectory;
    bool asJson = false;
    Output& output;
    Calendar calendar = Calendar::current();

    [[nodiscard]] HistoryStore openHistory() const { return HistoryStore(dataDirectory); }

    /// Where commands that only read get the history from.
    [[nodiscard]] std::unique_ptr<HistorySource> openSource() const {
        return std::make_unique<StoredHistory>(std::make_shared<HistoryStore>(dataDirectory), calendar);
    }

    /// The user's settings as they are now; says so when they could not all be read.
    [[nodiscard]] Preferences preferences() const {
        const StoredSettings stored = SettingsFile::ofUser().read();
        if (stored.note) output.sentence(*stored.note);
        return readPreferences(SettingValues(stored.values));
    }
};

/// A command line that makes no sense. what() is the sentence for the user.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace brindle
