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
    /// The file is the database of another program.
    static StoreError foreign(std::int64_t version);

    [[nodiscard]] std::int64_t foundVersion() const { return foundVersion_; }

private:
    StoreError(std::int64_t version, const char* message);

    std::int64_t foundVersion_;
};

/// The version of a history; 0 for a new file. Only reads.
/// Throws: StoreError for a newer version and for a database of another program; SQLiteError, of damage where
/// tables of a history are missing.
[[nodiscard]] std::int64_t requireHistory(SQLiteConnection& db);

/// Brings the database to schemaVersion, all steps in one transaction: the file is old or new, never
/// between. A database of an older version is first copied whole into `directory`, under the name
/// "History-before-v3-2024-03-05T14-07-09Z.sqlite" (version and UTC time of the copy).
///
/// Throws: what requireHistory() throws, with the file left untouched; SQLiteError; std::system_error.
/// After a failed step the database is at its old version and the copy stays.
void migrate(SQLiteConnection& db, const std::filesystem::path& directory, const Clock& now);

}  // namespace brindle
