#pragma once

#include "model/Walk.h"
#include "store/SQLiteConnection.h"

#include <span>

namespace brindle {

/// The temporary tables of one check: `staging`, every file that its walk saw, and `removed`, the inventory
/// paths that it will delete. They belong to the connection and are empty before and after every check.
class CommitStaging {
public:
    explicit CommitStaging(SQLiteConnection& db);
    ~CommitStaging();
    CommitStaging(const CommitStaging&) = delete;
    CommitStaging& operator=(const CommitStaging&) = delete;

    /// Stages a batch in a transaction of its own. A path that comes twice keeps its last size.
    void add(std::span<const ScanEntry> batch);

private:
    static SQLiteConnection& withEmptyTables(SQLiteConnection& db);

    SQLiteConnection& db_;
    SQLiteStatement insert_;
};

}  // namespace brindle
