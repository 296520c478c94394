#include "export/StatementWriter.h"

#include <cstddef>

namespace brindle {
namespace {

constexpr std::size_t partSize = 65'536;

}  // namespace

StatementWriter::StatementWriter(std::unique_ptr<OutputFile> file) : file_(std::move(file)) {
    buffer_ = storageStatement::byteOrderMark;
    buffer_ += storageStatement::headerLine();
}

void StatementWriter::write(const storageStatement::Row& row) {
    storageStatement::appendLine(row, buffer_);
    ++rowCount_;
    if (buffer_.size() >= partSize) flush();
}

void StatementWriter::finish() {
    flush();
    file_->finish();
}

void StatementWriter::discard() noexcept {
    file_->discard();
}

void StatementWriter::flush() {
    file_->write(buffer_);
    buffer_.clear();
}

}  // namespace brindle
