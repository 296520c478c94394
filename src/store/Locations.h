#pragma once

#include "model/LocationRecord.h"
#include "model/UnixTime.h"
#include "model/Walk.h"
#include "store/SQLiteConnection.h"

#include <string>
#include <vector>

// The statements behind the location operations of HistoryStore, which says what they mean.

namespace brindle {

void insertLocation(SQLiteConnection& db, const LocationRecord& record);
void setLocationStatus(SQLiteConnection& db, const LocationID& id, LocationStatus status);
void updateLocationAccess(SQLiteConnection& db, const LocationID& id, const std::string& path,
                          const std::string& scanPath, const std::optional<Bytes>& bookmark);
void removeLocation(SQLiteConnection& db, const LocationID& id, UnixTime at);
void forgetLocation(SQLiteConnection& db, const LocationID& id);
[[nodiscard]] std::vector<LocationRecord> loadLocations(SQLiteConnection& db);
[[nodiscard]] std::vector<UnreadableFolder> loadUnreadableFolders(SQLiteConnection& db, const LocationID& id);

}  // namespace brindle
