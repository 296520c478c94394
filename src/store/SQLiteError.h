#pragma once

#include <stdexcept>
#include <string>

namespace brindle {

/// A failed SQLite call.
class SQLiteError : public std::runtime_error {
public:
    /// `code` is SQLite's result code, 0 where no SQLite call failed.
    SQLiteError(int code, std::string message);

    [[nodiscard]] int code() const { return code_; }
    [[nodiscard]] const std::string& message() const { return message_; }

    /// What a person can do something about.
    [[nodiscard]] bool isDamage() const;    // the file is not, or no longer, a whole database
    [[nodiscard]] bool isFull() const;      // no room on the disk
    [[nodiscard]] bool isLocked() const;    // another program keeps writing
    [[nodiscard]] bool isReadOnly() const;  // the file or its folder cannot be written or opened

    /// The statement could not do what it says, as where a sum does not fit.
    [[nodiscard]] bool isWrongStatement() const;

private:
    [[nodiscard]] int primaryCode() const { return code_ & 0xff; }

    int code_;
    std::string message_;
};

}  // namespace brindle
