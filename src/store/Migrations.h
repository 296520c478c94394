#pragma once

#include "model/UnixTime.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <filesystem>
#include <stdexcept>

namespace brindle {

/// The schema version that this program reads and writes (`PRAGMA user_version`). docs/SCHEMA.md
/// describes the format.
inline constexpr std::int64_t schemaVersion = 5;

/// A history that this program must not touch.
class StoreError : public std::runtime_error {
public:
    /// The file was written by a program with a newer schema.
    static StoreError newerSchema(std::int64_t version);

    [[nodiscard]] std::int64_t foundVersion() const { return foundVersion_; }

private:
    StoreError(std::int64_t version, const char* message);

    std::int64_t foundVersion_;
};

/// Brings the database to schemaVersion, all steps in one transaction: the file is old or new, never
/// between. A database of an older version is first copied whole into `directory`, under the name
/// "History-before-v3-2024-03-05T14-07-09Z.sqlite" (version and UTC time of the copy).
///
/// Throws: StoreError for a newer version, with the file left untouched; SQLiteError; std::system_error.
/// After a failed step the database is at its old version and the copy stays.
void migrate(SQLiteConnection& db, const std::filesystem::path& directory, const Clock& now);

}  // namespace brindle
