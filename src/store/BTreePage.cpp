#include "store/BTreePage.h"

#include <algorithm>
#include <array>
#include <bit>

namespace brindle {
namespace {

constexpr std::size_t fileHeaderSize = 100;

/// Reads forward through bytes; gives nothing at and beyond their end.
class ByteReader {
public:
    ByteReader(std::span<const std::uint8_t> bytes, std::size_t at) : bytes_(bytes), at_(at) {}

    [[nodiscard]] std::size_t position() const { return at_; }

    std::optional<std::uint64_t> number(std::size_t size) {
        if (at_ > bytes_.size() || size > bytes_.size() - at_) return {};
        at_ += size;
        return bigEndian(bytes_, at_ - size, size);
    }

    /// Seven bits a byte while the eighth is set; of a ninth byte all eight.
    std::optional<std::uint64_t> variable() {
        std::uint64_t value = 0;
        for (int i = 0; i < 8; ++i) {
            const auto byte = number(1);
            if (!byte) return {};
            value = value << 7 | (*byte & 0x7f);
            if ((*byte & 0x80) == 0) return value;
        }
        const auto last = number(1);
        return last ? std::optional(value << 8 | *last) : std::nullopt;
    }

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t at_;
};

/// How much of a payload lies in the page itself.
std::size_t localSizeOf(std::uint64_t payload, std::size_t pageSize, bool isOfTable) {
    const std::uint64_t most = isOfTable ? pageSize - 35 : (pageSize - 12) * 64 / 255 - 23;
    if (payload <= most) return static_cast<std::size_t>(payload);
    const std::uint64_t least = (pageSize - 12) * 32 / 255 - 23;
    const std::uint64_t local = least + (payload - least) % (pageSize - 4);
    return static_cast<std::size_t>(local <= most ? local : least);
}

struct PlacedCell {
    std::size_t begin = 0;
    std::size_t end = 0;
    BTreePage::Cell cell;
};

std::optional<PlacedCell> cellAt(std::span<const std::uint8_t> page, std::size_t offset,
                                 BTreePage::Kind kind) {
    constexpr std::size_t smallestCell = 4;
    ByteReader reader(page, offset);
    PlacedCell placed{.begin = offset, .end = offset, .cell = {}};
    BTreePage::Cell& cell = placed.cell;
    const bool isOfTable = kind == BTreePage::Kind::tableInterior || kind == BTreePage::Kind::tableLeaf;
    if (kind == BTreePage::Kind::tableInterior || kind == BTreePage::Kind::indexInterior) {
        const auto child = reader.number(4);
        if (!child) return {};
        cell.leftChild = static_cast<PageNumber>(*child);
    }
    if (kind != BTreePage::Kind::tableInterior) {
        const auto size = reader.variable();
        if (!size) return {};
        cell.payloadSize = *size;
    }
    if (isOfTable) {
        const auto rowID = reader.variable();
        if (!rowID) return {};
        cell.rowID = static_cast<std::int64_t>(*rowID);
    }
    if (kind != BTreePage::Kind::tableInterior) {
        cell.payloadAt = reader.position();
        cell.localSize = localSizeOf(cell.payloadSize, page.size(), isOfTable);
        if (cell.localSize > page.size() - cell.payloadAt) return {};
        reader = ByteReader(page, cell.payloadAt + cell.localSize);
        if (cell.localSize < cell.payloadSize) {
            const auto overflow = reader.number(4);
            if (!overflow) return {};
            cell.overflow = static_cast<PageNumber>(*overflow);
        }
    }
    placed.end = std::max(reader.position(), offset + smallestCell);
    return placed;
}

/// Where two cells share a place, at least one is not what it was: which one cannot be told.
void dropOverlapping(std::vector<PlacedCell>& cells) {
    std::ranges::sort(cells, {}, &PlacedCell::begin);
    std::vector<bool> overlaps(cells.size());
    std::size_t furthest = 0;  // the cell before that reaches the furthest
    for (std::size_t i = 1; i < cells.size(); ++i) {
        if (cells[i].begin < cells[furthest].end) overlaps[i] = overlaps[furthest] = true;
        if (cells[i].end > cells[furthest].end) furthest = i;
    }
    std::size_t i = 0;
    std::erase_if(cells, [&](const PlacedCell&) { return overlaps[i++]; });
}

/// What the list of free blocks in a page, which lie in ascending order, adds up to.
std::size_t freeBytes(std::span<const std::uint8_t> page, std::size_t first) {
    std::size_t sum = 0;
    for (std::size_t at = first, before = 0; at > before && at + 4 <= page.size();) {
        sum += static_cast<std::size_t>(bigEndian(page, at + 2, 2));
        before = at;
        at = static_cast<std::size_t>(bigEndian(page, at, 2));
    }
    return sum;
}

/// The type under which an integer is written.
std::uint64_t typeOf(std::int64_t value) {
    if (value == 0 || value == 1) return value == 1 ? 9 : 8;
    const auto magnitude = static_cast<std::uint64_t>(value < 0 ? ~value : value);
    const auto bits = std::bit_width(magnitude) + 1;
    return bits <= 32 ? static_cast<std::uint64_t>(bits + 7) / 8 : bits <= 48 ? 5 : 6;
}

std::size_t sizeOfIntegerType(std::uint64_t type) {
    return type <= 4 ? static_cast<std::size_t>(type) : type == 5 ? 6 : 8;
}

std::optional<StoredValue> valueOf(std::span<const std::uint8_t> payload, std::size_t at, std::uint64_t type,
                                   std::size_t& size) {
    constexpr std::uint64_t real = 7;
    constexpr std::uint64_t zero = 8;
    constexpr std::uint64_t one = 9;
    constexpr std::uint64_t firstBlob = 12;
    if (type == 10 || type == 11) return {};
    const std::uint64_t wanted = type == 0 || type == zero || type == one ? 0
                                 : type <= real                           ? sizeOfIntegerType(type)
                                                                          : (type - firstBlob) / 2;
    if (wanted > payload.size() - at) return {};
    size = static_cast<std::size_t>(wanted);
    if (type == 0) return StoredValue(nullptr);
    if (type == zero || type == one) return StoredValue(std::int64_t{type == one ? 1 : 0});
    if (type == real) return StoredValue(std::bit_cast<double>(bigEndian(payload, at, 8)));
    if (type < real) {
        const auto unused = static_cast<int>(64 - 8 * size);  // shifted there and back, for the sign
        const auto value = static_cast<std::int64_t>(bigEndian(payload, at, size) << unused) >> unused;
        // It is written in as few bytes as it needs: one that is not was written over.
        return typeOf(value) == type ? std::optional<StoredValue>(value) : std::nullopt;
    }
    const auto* begin = payload.data() + at;
    if (type % 2 != 0) return StoredValue(std::string(begin, begin + size));
    StoredBlob blob(size);
    std::ranges::transform(payload.subspan(at, size), blob.begin(),
                           [](std::uint8_t byte) { return std::byte{byte}; });
    return StoredValue(std::move(blob));
}

}  // namespace

std::optional<BTreePage> BTreePage::parse(std::span<const std::uint8_t> page, PageNumber number) {
    const std::size_t headerAt = number == 1 ? fileHeaderSize : 0;
    ByteReader header(page, headerAt);
    const auto kind = header.number(1);
    constexpr std::array<std::uint64_t, 4> kinds{2, 5, 10, 13};
    if (!kind || std::ranges::find(kinds, *kind) == kinds.end()) return {};
    BTreePage parsed{.kind = static_cast<Kind>(*kind)};
    const auto firstFree = header.number(2);
    const auto cellCount = header.number(2);
    const auto contentAt = header.number(2);
    const auto fragments = header.number(1);
    const auto right = parsed.isLeaf() ? std::optional<std::uint64_t>(0) : header.number(4);
    if (!cellCount || !right) return {};
    parsed.rightChild = static_cast<PageNumber>(*right);

    const std::size_t cellsFrom = header.position() + 2 * static_cast<std::size_t>(*cellCount);
    if (cellsFrom > page.size()) return {};
    std::vector<PlacedCell> placed;
    for (std::uint64_t i = 0; i < *cellCount; ++i) {
        const auto offset = static_cast<std::size_t>(*header.number(2));
        if (offset < cellsFrom) continue;
        if (const auto cell = cellAt(page, offset, parsed.kind)) placed.push_back(*cell);
    }
    dropOverlapping(placed);
    std::uint64_t accounted = *contentAt == 0 ? 65536 : *contentAt;
    accounted += *fragments + freeBytes(page, static_cast<std::size_t>(*firstFree));
    for (const PlacedCell& cell : placed) {
        parsed.cells.push_back(cell.cell);
        parsed.reachesPageEnd = parsed.reachesPageEnd || cell.end == page.size();
        accounted += cell.end - cell.begin;
    }
    parsed.isSound = accounted == page.size();
    parsed.refused = static_cast<std::size_t>(*cellCount) - parsed.cells.size();
    return parsed;
}

std::optional<StoredRow> parseRow(std::span<const std::uint8_t> payload) {
    ByteReader header(payload, 0);
    const auto headerSize = header.variable();
    if (!headerSize || *headerSize > payload.size()) return {};
    StoredRow row;
    auto at = static_cast<std::size_t>(*headerSize);
    while (header.position() < *headerSize) {
        const auto type = header.variable();
        std::size_t size = 0;
        auto value = type ? valueOf(payload, at, *type, size) : std::nullopt;
        if (!value) return {};
        at += size;
        row.push_back(std::move(*value));
    }
    // Whatever is left over belongs to no value: the row is not what was written.
    if (header.position() != *headerSize || at != payload.size()) return {};
    return row;
}

}  // namespace brindle
