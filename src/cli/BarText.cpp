#include "cli/BarText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace brindle {
namespace {

constexpr std::size_t eighthsOfBlock = 8;
constexpr const char* fullBlock = "█";
/// Blocks that are filled from the left, by eighths.
constexpr std::array<const char*, eighthsOfBlock> leftBlocks = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};

std::string repeated(const char* text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

}  // namespace

BarText::BarText(std::int64_t mostAdded, std::int64_t mostFreed, std::size_t columns, Characters characters)
    : characters_(characters), mostAdded_(mostAdded), mostFreed_(mostFreed) {
    const auto added = static_cast<double>(mostAdded);
    const auto freed = static_cast<double>(mostFreed);
    if (columns == 0 || added + freed <= 0) return;
    left_ = static_cast<std::size_t>(std::lround(static_cast<double>(columns) * (freed / (added + freed))));
    if (mostFreed > 0) left_ = std::max<std::size_t>(left_, 1);
    if (mostAdded > 0) left_ = std::min(left_, columns - 1);
    right_ = columns - left_;
    if (left_ > 0) bytesOfColumn_ = freed / static_cast<double>(left_);
    if (right_ > 0) bytesOfColumn_ = std::max(bytesOfColumn_, added / static_cast<double>(right_));
}

std::size_t BarText::eighths(std::int64_t bytes, std::size_t columns) const {
    if (bytes <= 0 || columns == 0) return 0;
    const double length = static_cast<double>(bytes) / bytesOfColumn_ * eighthsOfBlock;
    return std::clamp<std::size_t>(static_cast<std::size_t>(std::lround(length)), 1,
                                   columns * eighthsOfBlock);
}

std::string BarText::freed(std::int64_t bytes) const {
    if (bytes > mostFreed_ && left_ > 0) return freedMark() + repeated(wholeColumn(), left_ - 1);
    const std::size_t length = eighths(bytes, left_);
    if (characters_ == Characters::ascii) {
        const std::size_t columns = (length + eighthsOfBlock / 2) / eighthsOfBlock;
        const std::size_t shown = std::max<std::size_t>(columns, length > 0 ? 1 : 0);
        return std::string(left_ - shown, ' ') + std::string(shown, '#');
    }
    // Of the blocks that are filled from the right there are an eighth and a half.
    std::size_t whole = length / eighthsOfBlock;
    const std::size_t rest = length % eighthsOfBlock;
    const char* tip = "";
    if (rest > 6)
        ++whole;
    else if (rest > 2)
        tip = "▐";
    else if (rest > 0)
        tip = "▕";
    const std::size_t blanks = left_ - whole - (*tip != '\0' ? 1 : 0);
    return std::string(blanks, ' ') + tip + repeated(fullBlock, whole);
}

const char* BarText::zeroLine() const {
    return characters_ == Characters::ascii ? "|" : "│";
}

const char* BarText::addedMark() const {
    return characters_ == Characters::ascii ? ">" : "▶";
}

const char* BarText::freedMark() const {
    return characters_ == Characters::ascii ? "<" : "◀";
}

const char* BarText::wholeColumn() const {
    return characters_ == Characters::ascii ? "#" : fullBlock;
}

std::string BarText::added(std::int64_t bytes) const {
    if (bytes > mostAdded_ && right_ > 0) return repeated(wholeColumn(), right_ - 1) + addedMark();
    const std::size_t length = eighths(bytes, right_);
    if (characters_ == Characters::ascii) {
        const std::size_t columns = (length + eighthsOfBlock / 2) / eighthsOfBlock;
        return std::string(std::max<std::size_t>(columns, length > 0 ? 1 : 0), '#');
    }
    return repeated(fullBlock, length / eighthsOfBlock) + leftBlocks.at(length % eighthsOfBlock);
}

}  // namespace brindle
