#pragma once

#include "store/Commit.h"

namespace brindle {

/// The plain way to commit a check, which the real one must equal row by row: every file that the walk saw
/// goes into a table, and queries tell how that table differs from the inventory.
CheckCommit stagedCommit(SQLiteConnection& db, const CheckRequest& request);

}  // namespace brindle
