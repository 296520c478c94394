#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A small subset of the path syntax of SVG: the absolute commands M, L, H, V and Z, and z for Z.
namespace brindle::SVGPath {

struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// Begins a subpath.
struct Move {
    Point to;

    bool operator==(const Move&) const = default;
};

struct Line {
    Point to;

    bool operator==(const Line&) const = default;
};

/// Ends the subpath with a line to where it began, and stands there.
struct Close {
    bool operator==(const Close&) const = default;
};

using Step = std::variant<Move, Line, Close>;

class ParseError : public std::runtime_error {
public:
    enum class Kind {
        unsupportedCommand,  // `character` is no command
        missingNumber,       // the command `character` has a number that could not be read
    };

    ParseError(Kind kind, std::string character);

    Kind kind;
    std::string character;  // as the user perceives one, in UTF-8

    bool operator==(const ParseError& other) const {
        return kind == other.kind && character == other.character;
    }
};

/// What the UTF-8 text draws, in the order of drawing, from the origin. Every coordinate is finite.
/// Throws: ParseError.
[[nodiscard]] std::vector<Step> parse(std::string_view text);

}  // namespace brindle::SVGPath
