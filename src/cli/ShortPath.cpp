#include "cli/ShortPath.h"

#include "model/DisplayWidth.h"

namespace brindle {
namespace {

constexpr std::string_view ellipsis = "…";

/// Both ends of a name tell files apart: its beginning, and a number or an extension at its end.
std::string withoutMiddle(std::string_view name, std::size_t columns) {
    if (displayWidth(name) <= columns) return std::string(name);
    if (columns == 0) return {};
    const std::size_t kept = columns - 1;
    const std::string end = endOfWidth(name, kept / 2);
    return cutToWidth(name, kept - displayWidth(end)).append(ellipsis).append(end);
}

}  // namespace

std::string shortPath(std::string_view path, std::size_t columns) {
    if (displayWidth(path) <= columns) return std::string(path);
    std::string_view name = path;
    // From the first slash on, less and less: the first tail that fits is the longest.
    for (auto slash = path.find('/'); slash != path.npos; slash = path.find('/', slash + 1)) {
        const std::string_view tail = path.substr(slash);
        if (slash > 0 && displayWidth(tail) < columns) return std::string(ellipsis).append(tail);
        name = tail.substr(1);
    }
    const std::string_view head = name.size() == path.size() ? "" : "…/";
    const std::size_t headWidth = displayWidth(head);
    constexpr std::size_t leastOfName = 8;  // with less, the name says more than that there are folders
    if (columns < headWidth + leastOfName) return withoutMiddle(name, columns);
    return std::string(head) + withoutMiddle(name, columns - headWidth);
}

}  // namespace brindle
