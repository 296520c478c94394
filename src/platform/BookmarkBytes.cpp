#include "platform/Bookmark.h"
#include "platform/Paths.h"

#include <concepts>
#include <cstdint>
#include <limits>

// The form: version, path, volume, mount path, mounted root, inode, whether a birth time follows, its seconds
// and nanoseconds. Texts are preceded by their length; numbers are little-endian.

namespace brindle {
namespace {

constexpr std::uint8_t version = 1;

class Writer {
public:
    template <std::unsigned_integral Number>
    void number(Number value) {
        for (std::size_t i = 0; i < sizeof(Number); ++i)
            bytes.push_back(static_cast<std::byte>(static_cast<std::uint64_t>(value) >> (8 * i)));
    }
    void text(const std::string& value) {
        number(static_cast<std::uint32_t>(value.size()));
        const auto raw = std::as_bytes(std::span(value));
        bytes.insert(bytes.end(), raw.begin(), raw.end());
    }

    Bytes bytes;
};

/// Reads what Writer wrote. Once the bytes end early every value is empty, and the end never comes.
class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : left_(bytes) {}

    template <std::unsigned_integral Number>
    Number number() {
        std::uint64_t value = 0;
        const auto raw = take(sizeof(Number));
        for (std::size_t i = 0; i < raw.size(); ++i)
            value |= std::to_integer<std::uint64_t>(raw[i]) << (8 * i);
        return static_cast<Number>(value);
    }
    std::string text() {
        const auto raw = take(number<std::uint32_t>());
        return {reinterpret_cast<const char*>(raw.data()), raw.size()};
    }
    [[nodiscard]] bool isAtEnd() const { return isWhole_ && left_.empty(); }

private:
    std::span<const std::byte> take(std::size_t count) {
        isWhole_ = isWhole_ && count <= left_.size();
        if (!isWhole_) return {};
        const auto taken = left_.first(count);
        left_ = left_.subspan(count);
        return taken;
    }

    std::span<const std::byte> left_;
    bool isWhole_ = true;
};

constexpr std::uint32_t nanosecondsInSecond = 1'000'000'000;

bool isPath(const std::string& text) {
    return text.starts_with('/') && text.find('\0') == text.npos && standardizedPath(text, "/") == text;
}

}  // namespace

Bytes encode(const Bookmark& bookmark) {
    Writer out;
    out.number(version);
    out.text(bookmark.path);
    out.text(bookmark.volumeID);
    out.text(bookmark.mountPath);
    out.text(bookmark.mountedRoot);
    out.number(bookmark.folder.inode);
    out.number(static_cast<std::uint8_t>(bookmark.folder.birth.has_value()));
    if (const auto& birth = bookmark.folder.birth) {
        out.number(static_cast<std::uint64_t>(birth->seconds));
        out.number(birth->nanoseconds);
    }
    return out.bytes;
}

std::optional<Bookmark> decodeBookmark(std::span<const std::byte> bytes) {
    Reader in(bytes);
    if (in.number<std::uint8_t>() != version) return {};
    Bookmark bookmark;
    bookmark.path = in.text();
    bookmark.volumeID = in.text();
    bookmark.mountPath = in.text();
    bookmark.mountedRoot = in.text();
    bookmark.folder.inode = in.number<std::uint64_t>();
    const auto hasBirth = in.number<std::uint8_t>();
    if (hasBirth > 1) return {};
    if (hasBirth == 1) {
        const auto seconds = static_cast<std::int64_t>(in.number<std::uint64_t>());
        bookmark.folder.birth = BirthTime{seconds, in.number<std::uint32_t>()};
        if (bookmark.folder.birth->nanoseconds >= nanosecondsInSecond) return {};
    }
    return in.isAtEnd() && isPath(bookmark.path) ? std::optional(bookmark) : std::nullopt;
}

}  // namespace brindle
