#include "export/StatementWriter.h"

#include <cstddef>

namespace brindle {
namespace {

constexpr std::size_t partSize = 65'536;

}  // namespace

StatementWriter::StatementWriter(std::unique_ptr<OutputFile> file)
    : file_(std::move(file)), thread_("Brindle.export") {
    buffer_ = storageStatement::byteOrderMark;
    buffer_ += storageStatement::headerLine();
}

void StatementWriter::write(const storageStatement::Row& row) {
    storageStatement::appendLine(row, buffer_);
    ++rowCount_;
    if (buffer_.size() >= partSize) handOver();
}

void StatementWriter::finish() {
    handOver();
    awaitPart();
    file_->finish();
}

void StatementWriter::discard() noexcept {
    if (written_.valid()) written_.wait();
    file_->discard();
}

void StatementWriter::awaitPart() {
    if (written_.valid()) written_.get();
}

void StatementWriter::handOver() {
    awaitPart();
    part_.swap(buffer_);
    buffer_.clear();
    written_ = thread_.perform([this] { file_->write(part_); });
}

}  // namespace brindle
