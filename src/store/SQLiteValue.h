#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace brindle {

/// One value to bind to a `?`. Text and blobs are views: what they look at must live until the call that
/// takes the value returns. Booleans bind as 1 and 0, points in time as REAL Unix seconds, absent
/// optionals as NULL.
class SQLiteValue {
public:
    using Blob = std::span<const std::byte>;
    using Storage = std::variant<std::int64_t, double, std::string_view, Blob, std::nullptr_t>;

    template <std::integral Integer>
    SQLiteValue(Integer integer) : storage_(static_cast<std::int64_t>(integer)) {
        static_assert(std::signed_integral<Integer> || sizeof(Integer) < sizeof(std::int64_t),
                      "SQLite has no unsigned 64-bit integers");
    }
    SQLiteValue(double real) : storage_(real) {}
    SQLiteValue(std::string_view text) : storage_(text) {}
    SQLiteValue(const std::string& text) : storage_(std::string_view(text)) {}
    SQLiteValue(const char* text) : storage_(std::string_view(text)) {}
    SQLiteValue(const std::vector<std::byte>& blob) : storage_(Blob(blob)) {}
    SQLiteValue(std::nullptr_t) : storage_(nullptr) {}
    template <class Wrapped>
    SQLiteValue(const std::optional<Wrapped>& wrapped)
        : storage_(wrapped ? SQLiteValue(*wrapped).storage_ : Storage(nullptr)) {}

    [[nodiscard]] const Storage& storage() const { return storage_; }

private:
    Storage storage_;
};

template <class Value>
concept SQLiteBindable = std::convertible_to<const Value&, SQLiteValue>;

}  // namespace brindle
