#include "app/DesktopEntry.h"

#include <algorithm>

namespace brindle {
namespace {

constexpr std::string_view groupName = "[Desktop Entry]";
constexpr std::string_view blanks = " \t\r";
// What makes an argument need quotation, and what is escaped within one.
constexpr std::string_view reserved = " \t\n\"'\\><~|&;$*?#()`";
constexpr std::string_view escapedInQuotation = "\"`$\\";

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

bool isComment(std::string_view line) {
    const auto content = trimmed(line);
    return content.empty() || content.starts_with('#');
}

bool isGroup(std::string_view line) {
    const auto content = trimmed(line);
    return content.size() > 2 && content.starts_with('[') && content.ends_with(']');
}

/// Empty when the line holds no key.
std::string_view keyOf(std::string_view line) {
    if (isComment(line) || line.find('=') == std::string_view::npos) return {};
    return trimmed(line.substr(0, line.find('=')));
}

/// The escapes that every value of the file may have.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        switch (const char letter = value[++i]) {
            case 's':
                text += ' ';
                break;
            case 'n':
                text += '\n';
                break;
            case 't':
                text += '\t';
                break;
            case 'r':
                text += '\r';
                break;
            case '\\':
                text += '\\';
                break;
            default:
                (text += '\\') += letter;
        }
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string value;
    for (const char letter : text) {
        switch (letter) {
            case '\n':
                value += "\\n";
                break;
            case '\t':
                value += "\\t";
                break;
            case '\r':
                value += "\\r";
                break;
            case '\\':
                value += "\\\\";
                break;
            default:
                value += letter;
        }
    }
    return value;
}

std::string withoutFieldCodes(std::string_view argument) {
    std::string result;
    for (std::size_t i = 0; i < argument.size(); ++i) {
        if (argument[i] != '%') {
            result += argument[i];
        } else if (++i < argument.size() && argument[i] == '%') {
            result += '%';
        }
    }
    return result;
}

std::string quotedArgument(std::string_view argument) {
    std::string result;
    for (const char letter : argument) {
        if (escapedInQuotation.find(letter) != std::string_view::npos) result += '\\';
        if (letter == '%') result += '%';
        result += letter;
    }
    const bool needsQuotation =
        argument.empty() || argument.find_first_of(reserved) != std::string_view::npos;
    return needsQuotation ? '"' + result + '"' : result;
}

}  // namespace

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) return {};
    DesktopEntry entry;
    auto* part = &entry.before_;
    for (const auto line : linesOf(text)) {
        if (isGroup(line)) {
            const bool isFirst = part == &entry.before_;
            if (isFirst && trimmed(line) != groupName) return {};
            part = isFirst ? &entry.lines_ : &entry.after_;
            if (isFirst) part->clear();
        } else if (!isComment(line) && (part == &entry.before_ || keyOf(line).empty())) {
            return {};
        }
        part->emplace_back(line);
    }
    if (part == &entry.before_) return {};
    return entry;
}

std::optional<std::string> DesktopEntry::value(std::string_view key) const {
    const auto line = std::find_if(lines_.rbegin(), lines_.rend(),
                                   [key](const std::string& text) { return keyOf(text) == key; });
    if (line == lines_.rend()) return {};
    return std::string(trimmed(std::string_view(*line).substr(line->find('=') + 1)));
}

bool DesktopEntry::isTrue(std::string_view key) const {
    const auto text = value(key);
    return text == "true" || text == "1";
}

std::vector<std::string> DesktopEntry::list(std::string_view key) const {
    std::vector<std::string> items;
    const std::string text = value(key).value_or("");
    for (std::string_view rest = text; !rest.empty();) {
        const auto end = std::min(rest.find(';'), rest.size());
        if (end != 0) items.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return items;
}

void DesktopEntry::set(std::string_view key, std::string_view value) {
    std::string line(key);
    (line += '=') += value;
    const auto old = std::find_if(lines_.begin(), lines_.end(),
                                  [key](const std::string& text) { return keyOf(text) == key; });
    const auto place = old - lines_.begin();
    const bool isNew = old == lines_.end();
    remove(key);
    // A new key comes before the empty lines that part the group from the next one.
    auto end = lines_.end();
    while (isNew && trimmed(*(end - 1)).empty()) --end;
    lines_.insert(isNew ? end : lines_.begin() + place, std::move(line));
}

void DesktopEntry::remove(std::string_view key) {
    std::erase_if(lines_, [key](const std::string& line) { return keyOf(line) == key; });
}

std::string DesktopEntry::text() const {
    std::string result;
    for (const auto* part : {&before_, &lines_, &after_})
        for (const auto& line : *part) (result += line) += '\n';
    return result;
}

std::optional<std::vector<std::string>> commandOfExec(std::string_view value) {
    std::vector<std::string> command;
    std::string argument;
    bool isArgument = false;  // an empty quotation is an argument too
    char quotation = 0;
    const auto endArgument = [&] {
        std::string text = withoutFieldCodes(argument);
        // A field code alone stands for the files to open, of which there are none.
        if (isArgument && (argument.empty() || !text.empty())) command.push_back(std::move(text));
        argument.clear();
        isArgument = false;
    };
    const std::string text = unescaped(value);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        if (quotation == 0 && (letter == ' ' || letter == '\t' || letter == '\n')) {
            endArgument();
            continue;
        }
        isArgument = true;
        const bool isEscape = letter == '\\' && quotation != '\'' && i + 1 < text.size() &&
                              (quotation == 0 || escapedInQuotation.find(text[i + 1]) != std::string::npos);
        if (isEscape) {
            argument += text[++i];
        } else if (letter == quotation) {
            quotation = 0;
        } else if (quotation == 0 && (letter == '"' || letter == '\'')) {
            quotation = letter;
        } else {
            argument += letter;
        }
    }
    if (quotation != 0) return {};
    endArgument();
    if (command.empty() || command.front().empty()) return {};
    return command;
}

std::string execOfCommand(const std::vector<std::string>& command) {
    std::string line;
    for (const auto& argument : command) {
        if (!line.empty()) line += ' ';
        line += quotedArgument(argument);
    }
    return escaped(line);
}

}  // namespace brindle
