#include "ui/marks/SVGPath.h"

#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <utility>

namespace brindle::SVGPath {
namespace {

/// The user-perceived characters of the text.
std::vector<icu::UnicodeString> charactersOf(std::string_view text) {
    const auto all = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) throw std::runtime_error("characters cannot be told apart");
    breaks->setText(all);
    std::vector<icu::UnicodeString> characters;
    for (std::int32_t begin = breaks->first(), end = breaks->next(); end != icu::BreakIterator::DONE;
         begin = std::exchange(end, breaks->next()))
        characters.emplace_back(all, begin, end - begin);
    return characters;
}

std::string utf8(const icu::UnicodeString& character) {
    std::string text;
    return character.toUTF8String(text);
}

/// Nothing for a character of several code points, such as a letter with an accent of its own.
std::optional<UChar32> codePoint(const icu::UnicodeString& character) {
    if (character.hasMoreChar32Than(0, character.length(), 1)) return {};
    return character.char32At(0);
}

bool isSeparator(const icu::UnicodeString& character) {
    static const icu::UnicodeString single(u" ,\n\v\f\r\u0085\u2028\u2029");
    const auto code = codePoint(character);
    return code ? single.indexOf(*code) >= 0 : character == icu::UnicodeString("\r\n");
}

bool isOfNumber(const icu::UnicodeString& character) {
    const auto code = codePoint(character);
    return code && (u_isdigit(*code) || code == '-' || code == '.');
}

class Parser {
public:
    explicit Parser(std::string_view text) : characters_(charactersOf(text)) {}

    std::vector<Step> steps() {
        while (skipSeparators()) {
            command_ = utf8(characters_[position_++]);
            if (command_ == "M")
                move();
            else if (command_ == "L")
                repeat([this] { line(pair()); });
            else if (command_ == "H")
                repeat([this] { line({number(), at_.y}); });
            else if (command_ == "V")
                repeat([this] { line({at_.x, number()}); });
            else if (command_ == "Z" || command_ == "z")
                close();
            else
                throw ParseError(ParseError::Kind::unsupportedCommand, command_);
        }
        return std::move(steps_);
    }

private:
    /// False at the end.
    bool skipSeparators() {
        while (position_ < characters_.size() && isSeparator(characters_[position_])) ++position_;
        return position_ < characters_.size();
    }

    bool numberFollows() { return skipSeparators() && isOfNumber(characters_[position_]); }

    template <class Read>
    void repeat(Read read) {
        do read();
        while (numberFollows());
    }

    double number() {
        skipSeparators();
        std::string run;
        while (position_ < characters_.size() && isOfNumber(characters_[position_]))
            run += utf8(characters_[position_++]);
        double value = 0;
        const char* end = run.data() + run.size();
        const auto read = std::from_chars(run.data(), end, value, std::chars_format::fixed);
        if (read.ec != std::errc() || read.ptr != end)
            throw ParseError(ParseError::Kind::missingNumber, command_);
        return value;
    }

    Point pair() {
        const double x = number();
        return {x, number()};
    }

    void move() {
        begin_ = at_ = pair();
        steps_.emplace_back(Move{at_});
        while (numberFollows()) line(pair());
    }

    void line(Point to) {
        at_ = to;
        steps_.emplace_back(Line{to});
    }

    void close() {
        at_ = begin_;
        steps_.emplace_back(Close{});
    }

    std::vector<icu::UnicodeString> characters_;
    std::size_t position_ = 0;
    std::string command_;
    Point at_;
    Point begin_;  // of the subpath
    std::vector<Step> steps_;
};

}  // namespace

ParseError::ParseError(Kind kindOfError, std::string ofCharacter)
    : std::runtime_error(kindOfError == Kind::missingNumber ? "a number is missing after " + ofCharacter
                                                            : "there is no command " + ofCharacter),
      kind(kindOfError),
      character(std::move(ofCharacter)) {}

std::vector<Step> parse(std::string_view text) {
    return Parser(text).steps();
}

}  // namespace brindle::SVGPath
