#pragma once

#include "store/SQLiteConnection.h"

#include <exception>
#include <fmt/format.h>

namespace brindle {

/// More room for a connection's pages while it lives.
class LargerCache {
public:
    /// `kibibytes`: instead of what the connection has.
    LargerCache(SQLiteConnection& db, int kibibytes)
        : db_(db), before_(db.scalarInt64("PRAGMA main.cache_size").value_or(0)) {
        set(-kibibytes);
    }
    ~LargerCache() {
        try {
            set(before_);
        } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): it is only larger than it need be
        }
    }
    LargerCache(const LargerCache&) = delete;
    LargerCache& operator=(const LargerCache&) = delete;

private:
    void set(std::int64_t size) { db_.execute(fmt::format("PRAGMA main.cache_size = {}", size)); }

    SQLiteConnection& db_;
    std::int64_t before_;
};

}  // namespace brindle
