#pragma once

#include "model/LocalDay.h"
#include "store/SQLiteConnection.h"

// What keeps the history file from growing for ever, behind HistoryStore.

namespace brindle {

/// Whether pruning would delete anything, and is safe: there was a check on another day from `before` on than
/// today. A clock that is wrong for a day must not cost the whole history.
[[nodiscard]] bool isPruningDue(SQLiteConnection& db, const LocalDay& before, const LocalDay& today);

/// Deletes the history of all days before `before`, in one transaction. Of each location's tracked totals the
/// latest one stays, from which the tracked size of the first kept day follows. The inventory, the locations,
/// their unreadable folders and the export log are not history and stay whole.
void prune(SQLiteConnection& db, const LocalDay& before);

/// Folds the write-ahead log into the file and empties it. False when somebody was reading or writing
/// meanwhile: then the log keeps its size, and nothing is lost.
[[nodiscard]] bool checkpoint(SQLiteConnection& db);

}  // namespace brindle
