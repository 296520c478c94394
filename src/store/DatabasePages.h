#pragma once

#include "platform/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace brindle {

using PageNumber = std::uint32_t;  // from 1
using PageBytes = std::vector<std::uint8_t>;

/// Reads `size` (1 to 8) bytes, the most significant first.
[[nodiscard]] std::uint64_t bigEndian(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t size);

/// The pages of a database file as they were last committed: those in the write-ahead log, as far as its
/// checksums hold, before those in the file. Trusts nothing that is written in either, so that it works on
/// any file. Throws std::system_error with the path when the system does not let it read.
class DatabasePages {
public:
    /// `log` need not be there.
    DatabasePages(const std::string& file, const std::string& log);

    [[nodiscard]] std::size_t pageSize() const { return pageSize_; }
    [[nodiscard]] PageNumber count() const { return count_; }
    /// The page, with zeros where it cannot be read. Empty for a number beyond count().
    [[nodiscard]] PageBytes page(PageNumber number) const;

private:
    void readLog();
    [[nodiscard]] PageBytes bytes(const FileDescriptor& file, std::uint64_t offset, std::size_t size) const;
    /// How much of the file reads as whole pages of this size.
    [[nodiscard]] std::uint64_t fit(std::size_t pageSize) const;

    std::string path_;
    FileDescriptor file_;
    FileDescriptor log_;
    std::uint64_t fileSize_ = 0;
    std::size_t pageSize_ = 0;
    PageNumber count_ = 0;
    std::unordered_map<PageNumber, std::uint64_t> inLog_;  // where the page's latest contents begin
};

}  // namespace brindle
