#pragma once

#include "model/Calendar.h"
#include "model/UnixTime.h"
#include "store/HistoryStore.h"

namespace brindle {

/// Keeps the history file from growing for ever. To be called after every run of checks; what there is to do
/// shows in the file itself, so that it is done at most once a day, whichever program ran the checks:
///
/// - The days before the first retained one are pruned, once today's cutoff has something to delete.
/// - The write-ahead log, which keeps the size of the largest check, is emptied after pruning and whenever it
///   has become large.
///
/// Waits for the store's queues. Never fails: a history that is in use, or a disk that is full, leaves the
/// work to the next run.
void maintain(HistoryStore& store, const Clock& now = systemNow,
              const Calendar& calendar = Calendar::current());

}  // namespace brindle
