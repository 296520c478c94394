#pragma once

#include "export/StorageStatement.h"
#include "platform/OutputFile.h"

#include <cstdint>
#include <memory>
#include <string>

namespace brindle {

/// Writes one statement: any number of rows, then exactly one of finish and discard. A writer that goes
/// before it is finished discards. Holds one part of the file at a time, of 64 KiB and the row that filled
/// it. Failures are those of OutputFile; after one the statement is to be discarded.
class StatementWriter {
public:
    explicit StatementWriter(std::unique_ptr<OutputFile> file);

    void write(const storageStatement::Row& row);
    /// Returns once the statement is whole in its place and on the disk.
    void finish();
    void discard() noexcept;

    /// Without the line of column names.
    [[nodiscard]] std::int64_t rowCount() const { return rowCount_; }

private:
    void flush();

    std::unique_ptr<OutputFile> file_;
    std::string buffer_;
    std::int64_t rowCount_ = 0;
};

}  // namespace brindle
