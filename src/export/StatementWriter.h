#pragma once

#include "export/StorageStatement.h"
#include "platform/OutputFile.h"
#include "platform/TaskThread.h"

#include <cstdint>
#include <future>
#include <memory>
#include <string>

namespace brindle {

/// Writes one statement: any number of rows, then exactly one of finish and discard. A writer that goes
/// before it is finished discards. Holds two parts of the file at a time, of 64 KiB and the row that filled
/// each: one that is being filled, and one that a thread of its own writes meanwhile. Failures are those of
/// OutputFile, a part late; after one the statement is to be discarded.
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
    /// Waits until the last part is written, and throws what came of it.
    void awaitPart();
    void handOver();

    std::unique_ptr<OutputFile> file_;
    std::string buffer_;
    std::string part_;  // the thread's while it writes
    std::int64_t rowCount_ = 0;
    std::future<void> written_;  // not valid before the first part
    TaskThread thread_;          // last, so that it ends first
};

}  // namespace brindle
