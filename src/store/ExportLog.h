#pragma once

#include "model/UnixTime.h"
#include "store/SQLiteConnection.h"

#include <string>
#include <vector>

// Which statement files were written, behind HistoryStore.

namespace brindle {

/// Writing to the same path again only moves its time.
void recordExport(SQLiteConnection& db, const std::string& path, UnixTime at);

/// The latest 500 paths, latest first.
[[nodiscard]] std::vector<std::string> recentExports(SQLiteConnection& db);

}  // namespace brindle
