#include "ui/marks/SVGPath.h"

#include <gtest/gtest.h>
#include <optional>
#include <ostream>

namespace brindle::SVGPath {

void PrintTo(const Step& step, std::ostream* stream) {
    if (const auto* move = std::get_if<Move>(&step))
        *stream << "M " << move->to.x << " " << move->to.y;
    else if (const auto* line = std::get_if<Line>(&step))
        *stream << "L " << line->to.x << " " << line->to.y;
    else
        *stream << "Z";
}

namespace {

using Steps = std::vector<Step>;

TEST(SVGPath, DrawsWhatTheCommandsSay) {
    const Steps triangle{Move{{0, 0}}, Line{{10, 10}}, Line{{20, 0}}, Close{}};
    const struct {
        const char* text;
        Steps steps;
    } cases[] = {
        {"", {}},
        {" ,\n\u2028\u0085", {}},
        {"M0 0 10 10 20 0 Z", triangle},
        {"M0 0 L10 10 20 0 z", triangle},
        {"M0,0L10,10,20,0Z", triangle},
        {"M0\r\n0\u2029L10\n10\v20\f0Z", triangle},
        {"M3 5 H22 9 V20 -4", {Move{{3, 5}}, Line{{22, 5}}, Line{{9, 5}}, Line{{9, 20}}, Line{{9, -4}}}},
        {"L1.5 -.5", {Line{{1.5, -0.5}}}},
        {"H4", {Line{{4, 0}}}},
        {"M2 3 L8 8 Z H9", {Move{{2, 3}}, Line{{8, 8}}, Close{}, Line{{9, 3}}}},
        {"M1 2 M3 4", {Move{{1, 2}}, Move{{3, 4}}}},
    };
    for (const auto& [text, steps] : cases) EXPECT_EQ(parse(text), steps) << text;
}

std::optional<ParseError> errorOf(std::string_view text) {
    try {
        (void)parse(text);
        return {};
    } catch (const ParseError& error) {
        return error;
    }
}

TEST(SVGPath, SaysWhichCharacterItDoesNotKnow) {
    const std::pair<const char*, const char*> cases[] = {
        {"m0 0", "m"},
        {"M0 0 l1 1", "l"},
        {"M0 0 h1", "h"},
        {"M0 0 v1", "v"},
        {"M0 0 C1 1 2 2 3 3", "C"},
        {"5 5", "5"},
        {"H1e", "e"},  // the number ends before it
        {"M0 0\tL1 1", "\t"},
        {"M0 0 e\u0301", "e\u0301"},  // one character to the user
        {"M0 0 Z\u0308", "Z\u0308"},  // no Z
        {"\U0001F468\u200D\U0001F469", "\U0001F468\u200D\U0001F469"},
    };
    for (const auto& [text, character] : cases)
        EXPECT_EQ(errorOf(text), ParseError(ParseError::Kind::unsupportedCommand, character)) << text;
}

TEST(SVGPath, SaysWhichCommandMissesANumber) {
    const std::pair<const char*, const char*> cases[] = {
        {"M5", "M"},          {"M", "M"},      {"H", "H"},       {"V Z", "V"}, {"L1 1 2", "L"},
        {"M0 0 L1-2 3", "L"}, {"H1.2.3", "H"}, {"H-", "H"},      {"H.", "H"},  {"H--1", "H"},
        {"M0 0 1 Z", "M"},    {"H+1", "H"},    {"V\u0663", "V"},
    };
    for (const auto& [text, command] : cases)
        EXPECT_EQ(errorOf(text), ParseError(ParseError::Kind::missingNumber, command)) << text;
    EXPECT_EQ(errorOf("H" + std::string(400, '9')), ParseError(ParseError::Kind::missingNumber, "H"));
}

}  // namespace
}  // namespace brindle::SVGPath
