#pragma once

#include "store/SQLiteConnection.h"

#include <exception>
#include <type_traits>
#include <utility>

namespace brindle {

/// Whether a transaction takes the right to write at its beginning, so that the wait for another writer is
/// over before the first statement, or only sees one state of the history throughout and holds up nobody.
enum class TransactionKind { write, read };

/// Runs `body` in one transaction and returns its result. When the body or the commit throws, everything is
/// rolled back and that error goes on; an error of the rollback itself is not heard. A reading transaction
/// may write to temporary tables.
template <class Body>
auto inTransaction(SQLiteConnection& db, Body&& body, TransactionKind kind = TransactionKind::write) {
    // Made ready beforehand: what fails for want of memory has to be rolled back without any.
    SQLiteStatement rollback = db.prepare("ROLLBACK");
    try {
        db.execute(kind == TransactionKind::write ? "BEGIN IMMEDIATE" : "BEGIN");
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
            std::forward<Body>(body)();
            db.execute("COMMIT");
        } else {
            auto result = std::forward<Body>(body)();
            db.execute("COMMIT");
            return result;
        }
    } catch (...) {
        try {
            rollback.finish();
        } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): the first error is the one to tell
        }
        throw;
    }
}

}  // namespace brindle
