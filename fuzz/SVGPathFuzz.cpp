#include "ui/marks/SVGPath.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace brindle::SVGPath;

bool isFinite(const Step& step) {
    if (const auto* move = std::get_if<Move>(&step))
        return std::isfinite(move->to.x) && std::isfinite(move->to.y);
    if (const auto* line = std::get_if<Line>(&step))
        return std::isfinite(line->to.x) && std::isfinite(line->to.y);
    return true;
}

}  // namespace

// Any text is either a path of finite numbers, no longer than the text, or an error that says where.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const auto steps = parse(text);
        if (steps.size() > size) std::abort();
        for (const Step& step : steps)
            if (!isFinite(step)) std::abort();
    } catch (const ParseError& error) {
        if (error.character.empty()) std::abort();
    }
    return 0;
}
