#include "store/DatabasePages.h"

#include "store/BTreePage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

constexpr std::size_t usualPageSize = 4096;
constexpr std::size_t logHeaderSize = 32;
constexpr std::size_t frameHeaderSize = 24;
constexpr PageNumber judgedPages = 500;  // are enough to tell the page size

FileDescriptor openedIfThere(const std::string& path) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file && errno != ENOENT) throw std::system_error(errno, std::generic_category(), path);
    return file;
}

std::uint64_t sizeOf(const FileDescriptor& file) {
    const auto end = file ? ::lseek(file.get(), 0, SEEK_END) : 0;
    return end < 0 ? 0 : static_cast<std::uint64_t>(end);
}

/// 0 for a number that no page size is.
std::size_t validPageSize(std::uint64_t stated) {
    const bool isValid = std::has_single_bit(stated) && stated >= 512 && stated <= 65536;
    return isValid ? static_cast<std::size_t>(stated) : 0;
}

/// The running checksum of a write-ahead log.
class LogChecksum {
public:
    explicit LogChecksum(bool isBigEndian) : isBigEndian_(isBigEndian) {}

    void add(std::span<const std::uint8_t> bytes) {
        for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
            first_ += word(bytes, at) + second_;
            second_ += word(bytes, at + 4) + first_;
        }
    }
    [[nodiscard]] bool isStatedIn(std::span<const std::uint8_t> bytes, std::size_t at) const {
        return bigEndian(bytes, at, 4) == first_ && bigEndian(bytes, at + 4, 4) == second_;
    }

private:
    [[nodiscard]] std::uint32_t word(std::span<const std::uint8_t> bytes, std::size_t at) const {
        const auto value = static_cast<std::uint32_t>(bigEndian(bytes, at, 4));
        return isBigEndian_ ? value : __builtin_bswap32(value);
    }

    bool isBigEndian_;
    std::uint32_t first_ = 0;
    std::uint32_t second_ = 0;
};

}  // namespace

std::uint64_t bigEndian(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes.subspan(at, size)) value = value << 8 | byte;
    return value;
}

DatabasePages::DatabasePages(const std::string& file, const std::string& log)
    : path_(file), file_(openedIfThere(file)), log_(openedIfThere(log)), fileSize_(sizeOf(file_)) {
    readLog();
    if (pageSize_ == 0) {
        constexpr std::size_t statedAt = 16;
        const PageBytes begin = bytes(file_, 0, statedAt + 2);
        const std::uint64_t stated = begin.size() == statedAt + 2 ? bigEndian(begin, statedAt, 2) : 0;
        pageSize_ = usualPageSize;
        const std::size_t other = validPageSize(stated == 1 ? 65536 : stated);
        if (other != 0 && other != usualPageSize && fit(other) > fit(usualPageSize)) pageSize_ = other;
    }
    const std::uint64_t inFile = (fileSize_ + pageSize_ - 1) / pageSize_;
    count_ = std::max(count_, static_cast<PageNumber>(std::min<std::uint64_t>(
                                  inFile, std::numeric_limits<PageNumber>::max() - 1)));
}

PageBytes DatabasePages::page(PageNumber number) const {
    if (number == 0 || number > count_) return {};
    const auto logged = inLog_.find(number);
    PageBytes page = logged != inLog_.end() ? bytes(log_, logged->second, pageSize_)
                                            : bytes(file_, std::uint64_t{number - 1} * pageSize_, pageSize_);
    page.resize(pageSize_);
    return page;
}

void DatabasePages::readLog() {
    const PageBytes header = bytes(log_, 0, logHeaderSize);
    if (header.size() < logHeaderSize) return;
    constexpr std::uint64_t magic = 0x377f0682;  // its last bit tells the byte order of the checksums
    if ((bigEndian(header, 0, 4) & ~std::uint64_t{1}) != magic) return;
    LogChecksum sum((header[3] & 1) != 0);
    sum.add(std::span(header).first(24));
    const std::size_t size = validPageSize(bigEndian(header, 8, 4));
    if (size == 0 || !sum.isStatedIn(header, 24)) return;
    pageSize_ = size;

    std::unordered_map<PageNumber, std::uint64_t> uncommitted;
    for (std::uint64_t offset = logHeaderSize;; offset += frameHeaderSize + size) {
        const PageBytes frame = bytes(log_, offset, frameHeaderSize + size);
        if (frame.size() < frameHeaderSize + size) return;
        sum.add(std::span(frame).first(8));
        sum.add(std::span(frame).subspan(frameHeaderSize));
        const bool isOfThisLog = std::equal(frame.begin() + 8, frame.begin() + 16, header.begin() + 16);
        if (!isOfThisLog || !sum.isStatedIn(frame, 16)) return;
        uncommitted[static_cast<PageNumber>(bigEndian(frame, 0, 4))] = offset + frameHeaderSize;
        const auto pagesAfterCommit = static_cast<PageNumber>(bigEndian(frame, 4, 4));
        if (pagesAfterCommit == 0) continue;
        for (const auto& [number, at] : uncommitted) inLog_[number] = at;
        uncommitted.clear();
        count_ = pagesAfterCommit;
    }
}

PageBytes DatabasePages::bytes(const FileDescriptor& file, std::uint64_t offset, std::size_t size) const {
    PageBytes read(size);
    std::size_t length = 0;
    while (file && length < size) {
        const auto got =
            ::pread(file.get(), read.data() + length, size - length, static_cast<off_t>(offset + length));
        if (got < 0 && errno == EINTR) continue;
        // A sector that the disk cannot read any more is a page that is lost, and no reason to lose the
        // others.
        if (got < 0 && errno != EIO) throw std::system_error(errno, std::generic_category(), path_);
        if (got <= 0) break;
        length += static_cast<std::size_t>(got);
    }
    read.resize(length);
    return read;
}

std::uint64_t DatabasePages::fit(std::size_t pageSize) const {
    std::uint64_t fitting = 0;
    for (PageNumber number = 2; number <= judgedPages && number * pageSize <= fileSize_; ++number) {
        const PageBytes page = bytes(file_, std::uint64_t{number - 1} * pageSize, pageSize);
        const auto parsed = BTreePage::parse(page, number);
        if (parsed && parsed->reachesPageEnd) fitting += pageSize;
    }
    return fitting;
}

}  // namespace brindle
