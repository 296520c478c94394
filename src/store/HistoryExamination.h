#pragma once

#include "model/LocationRecord.h"
#include "store/HistoryFiles.h"
#include "store/SQLiteConnection.h"

#include <cstdint>
#include <string>
#include <vector>

namespace brindle {

/// What a history's database is found to be.
enum class HistoryCondition {
    absent,    // no file, or an empty one: the next check begins a history
    whole,     // every page and every sum is right
    outdated,  // whole, of an older version: the next program that opens it brings it up to date
    newer,     // of a version that this program does not know
    foreign,   // the database of another program
    damaged,   // pages are damaged, or sums do not agree with what they are the sums of
    leftOpen,  // a program that had it open was killed, and SQLite has to put it in order first
};

struct HistoryExamination {
    HistoryCondition condition = HistoryCondition::absent;
    std::int64_t version = 0;
    /// What is damaged, each in a few words of SQLite's or in a sentence of ours.
    std::vector<std::string> faults;
    std::vector<LocationRecord> locations;  // when it is whole
    std::int64_t bytes = 0;                 // of the database and its log
};

/// How to read a database that others may have open without writing anything: they keep its log's index up to
/// date; what one that was killed left of log and index is read and left as it is.
[[nodiscard]] SQLiteConnection::Access quietAccess(const HistoryFiles& files);

/// Looks at every page and every sum of a history. Writes nothing, needs no right to write, and holds up
/// nobody. Throws: SQLiteError when it cannot be read for another reason than damage, std::system_error.
[[nodiscard]] HistoryExamination examineHistory(const HistoryFiles& files);

}  // namespace brindle
