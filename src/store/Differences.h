#pragma once

#include "store/SQLiteConnection.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace brindle {

/// What one check found to differ from the inventory, set aside until the walk is over: a temporary table, so
/// that a check which finds everything changed needs no more memory than one which finds nothing. It belongs
/// to the connection and is empty before and after every check.
class Differences {
public:
    explicit Differences(SQLiteConnection& db);
    ~Differences();
    Differences(const Differences&) = delete;
    Differences& operator=(const Differences&) = delete;

    /// A path in the order of the walk. `size` is absent for a file that the walk did not see, `stored` for
    /// one that the inventory does not have.
    void add(std::string_view path, std::optional<std::int64_t> size, std::optional<std::int64_t> stored);

    /// The files that the walk saw, as rows of (rel_path, size, stored size or NULL), in the order of add().
    [[nodiscard]] SQLiteStatement seen();

    /// The files that it did not see, as rows of (rel_path, stored size), in the order of add().
    [[nodiscard]] SQLiteStatement unseen();

private:
    static SQLiteConnection& withEmptyTable(SQLiteConnection& db);

    SQLiteConnection& db_;
    SQLiteStatement insert_;
};

}  // namespace brindle
