#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace brindle {

/// Lays amounts of added and freed bytes out as bars on both sides of one zero line: added to the right,
/// freed to the left, on a common scale. An amount that is not zero shows, and one beyond the scale ends in a
/// mark.
class BarText {
public:
    enum class Characters { blocks, ascii };

    /// `mostAdded` and `mostFreed` are the amounts at the ends of the scale, `columns` those of both sides
    /// together.
    BarText(std::int64_t mostAdded, std::int64_t mostFreed, std::size_t columns, Characters characters);

    /// Filled up with blanks at its left, so that the zero line stands where it stands in every row.
    [[nodiscard]] std::string freed(std::int64_t bytes) const;
    [[nodiscard]] const char* zeroLine() const;
    [[nodiscard]] std::string added(std::int64_t bytes) const;
    [[nodiscard]] std::size_t columnsOfAdded() const { return right_; }
    /// How the bar of an amount beyond the scale ends on the side of what was added.
    [[nodiscard]] const char* addedMark() const;
    [[nodiscard]] const char* freedMark() const;

private:
    [[nodiscard]] const char* wholeColumn() const;
    [[nodiscard]] std::size_t eighths(std::int64_t bytes, std::size_t columns) const;

    Characters characters_;
    std::int64_t mostAdded_;
    std::int64_t mostFreed_;
    std::size_t left_ = 0;
    std::size_t right_ = 0;
    double bytesOfColumn_ = 0;
};

}  // namespace brindle
