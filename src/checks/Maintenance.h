#pragma once

#include "model/Calendar.h"
#include "model/UnixTime.h"
#include "store/HistoryStore.h"

namespace brindle {

/// Brings a run of checks safely to the disk, and keeps the history file from growing for ever. To be called
/// after every run; what there is to do shows in the file itself, whichever program ran the checks:
///
/// - The days before the first retained one are pruned, once today's cutoff has something to delete.
/// - What was committed is brought from the write-ahead log into the file, so that it outlives a loss of
///   power, and the log, which keeps the size of the largest check, is emptied.
///
/// Waits for the store's queues. Never fails: a history that is in use, or a disk that is full, leaves the
/// work to the next run.
void maintain(HistoryStore& store, const Clock& now = systemNow,
              const Calendar& calendar = Calendar::current());

}  // namespace brindle
