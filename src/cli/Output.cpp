#include "cli/Output.h"

#include "model/Change.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Terminal.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace brindle {
namespace {

constexpr std::size_t amountWidth = 10;

/// How many columns a text takes that has no wide or combining characters.
std::size_t columns(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; }));
}

/// As much of the text as fits into so many columns.
std::string_view cut(std::string_view text, std::size_t width) {
    std::size_t end = text.size();
    while (columns(text.substr(0, end)) > width) --end;
    return text.substr(0, end);
}

void write(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
}

}  // namespace

Output::Output()
    : hasColour_(wantsColour(StandardStream::output)), showsProgress_(isTerminal(StandardStream::error)) {}

void Output::line(std::string_view text) {
    endProgress();
    write(stdout, text);
    write(stdout, "\n");
}

void Output::json(const nlohmann::ordered_json& result) {
    constexpr int indent = 2;
    // Names are bytes; JSON is UTF-8.
    line(result.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void Output::sentence(std::string_view text) {
    endProgress();
    std::fflush(stdout);
    write(stderr, text);
    write(stderr, "\n");
}

void Output::progress(std::string_view locationName, const ScanProgress& progress) {
    if (!showsProgress_) return;
    const double rate = progress.elapsed > 0 ? static_cast<double>(progress.filesSeen) / progress.elapsed : 0;
    const std::string text =
        fmt::format(fmt::runtime(translated("Checking your files… {} · {} files · {} · {} files a second")),
                    fileNameText(locationName), groupedNumber(progress.filesSeen),
                    byteAmount(progress.bytesSeen), groupedNumber(static_cast<std::int64_t>(rate)));
    // Back to the first column, and what was longer before is cleared. A line that wrapped could not be.
    const auto width = static_cast<std::size_t>(std::max(terminalWidth(StandardStream::error) - 1, 1));
    write(stderr, fmt::format("\r{}\x1b[K", cut(text, width)));
    isInProgress_ = true;
}

void Output::endProgress() {
    if (!isInProgress_) return;
    write(stderr, "\r\x1b[K");
    isInProgress_ = false;
}

std::string Output::amountColumn(std::int64_t byteDelta) const {
    const std::string amount = signedByteAmount(byteDelta);
    const std::size_t width = columns(amount);
    const std::string padding(width < amountWidth ? amountWidth - width : 0, ' ');
    return padding + (byteDelta < 0 ? styled("36", amount) : styled("33", amount));
}

std::string Output::added(std::int64_t bytes) const {
    return styled("33", signedByteAmount(bytes));
}
std::string Output::freed(std::int64_t bytes) const {
    return styled("36", signedByteAmount(-bytes));
}
std::string Output::emphasized(std::string_view text) const {
    return styled("1", text);
}

std::string Output::styled(std::string_view code, std::string_view text) const {
    return hasColour_ ? fmt::format("\x1b[{}m{}\x1b[0m", code, text) : std::string(text);
}

bool Output::flush() {
    endProgress();
    errno = 0;
    const bool isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return isWritten || errno == EPIPE;
}

}  // namespace brindle
