#include "cli/Output.h"

#include "cli/ShortPath.h"
#include "cli/WrappedText.h"
#include "model/DisplayWidth.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Terminal.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <utility>

namespace brindle {
namespace {

std::optional<std::size_t> widthOfResult() {
    if (!isTerminal(StandardStream::output)) return {};
    return static_cast<std::size_t>(std::max(terminalWidth(StandardStream::output), 1));
}

/// The parameter of "select graphic rendition" (ECMA-48).
const char* codeOf(TextStyle style) {
    switch (style) {
        case TextStyle::added:
            return "33";
        case TextStyle::freed:
            return "36";
        case TextStyle::emphasized:
            return "1";
        case TextStyle::faint:
            return "2";
        case TextStyle::plain:
            break;
    }
    return "0";
}

}  // namespace

Output::Output()
    : hasColour_(wantsColour(StandardStream::output)),
      showsProgress_(isTerminal(StandardStream::error)),
      width_(widthOfResult()) {}

void Output::line(std::string_view text) {
    this->text(text);
    write(stdout, "\n");
}

void Output::paragraph(std::string_view text, std::size_t indent) {
    const auto columns = width_ ? std::optional(*width_ - std::min(indent, *width_)) : std::nullopt;
    for (const std::string& part : wrapped(text, columns)) line(std::string(indent, ' ') + part);
}

void Output::text(std::string_view text) {
    tellWhatIsDue();
    endProgress();
    write(stdout, text);
}

void Output::heading(std::string_view name, std::string_view path) {
    constexpr std::size_t leastOfPath = 20;
    const std::string shownName = fileNameText(name);
    std::string shownPath = fileNameText(path);
    if (width_) {
        const std::size_t others = displayWidth(shownName) + 2;
        shownPath = shortPath(shownPath, std::max(*width_, others + leastOfPath) - others);
    }
    line(fmt::format("{}  {}", emphasized(shownName), shownPath));
}

void Output::json(const nlohmann::ordered_json& result) {
    constexpr int indent = 2;
    writeJson(result, indent);
}

void Output::jsonLine(const nlohmann::ordered_json& result) {
    writeJson(result, -1);
}

void Output::writeJson(nlohmann::ordered_json result, int indent) {
    if (isExample_) {
        if (result.is_object()) result["isExample"] = true;
        if (result.is_array())
            for (auto& one : result) one["isExample"] = true;
    }
    // Names are bytes; JSON is UTF-8.
    line(result.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void Output::tellOfExample() {
    isExample_ = true;
}

void Output::tellWhatIsDue() {
    if (isExample_ && !std::exchange(isExampleTold_, true)) failure(translated("This is example history."));
}

void Output::sentence(std::string_view text) {
    tellWhatIsDue();
    failure(text);
}

void Output::failure(std::string_view text) {
    static_cast<void>(flush());  // so that the sentence stands behind what it is about
    write(stderr, text);
    write(stderr, "\n");
}

void Output::progress(std::string_view locationName, const ScanProgress& progress) {
    if (!showsProgress_) return;
    const double rate = progress.elapsed > 0 ? static_cast<double>(progress.filesSeen) / progress.elapsed : 0;
    const std::string text =
        filled(translatedCount("Checking your files… {} · {} file · {} · {} a second",
                               "Checking your files… {} · {} files · {} · {} a second", progress.filesSeen),
               fileNameText(locationName), groupedNumber(progress.filesSeen), byteAmount(progress.bytesSeen),
               groupedNumber(static_cast<std::int64_t>(rate)));
    showProgress(text);
}

void Output::estimating(std::string_view locationName) {
    if (!showsProgress_) return;
    showProgress(filled(translated("Estimating earlier history… {}"), fileNameText(locationName)));
}

void Output::exporting(std::int64_t rows, std::int64_t allRows) {
    if (!showsProgress_) return;
    showProgress(filled(translated("Writing the statement… {} of {} rows"), groupedNumber(rows),
                        groupedNumber(allRows)));
}

void Output::showProgress(const std::string& text) {
    // A line that wrapped could not be written over.
    const auto columns = static_cast<std::size_t>(std::max(terminalWidth(StandardStream::error) - 1, 1));
    const std::string shown = cutToWidth(text, columns);
    endProgress();
    write(stderr, shown);
    progressWidth_ = displayWidth(shown);
}

void Output::endProgress() {
    if (progressWidth_ == 0) return;
    write(stderr, "\r" + std::string(progressWidth_, ' ') + "\r");
    progressWidth_ = 0;
}

std::string Output::styled(TextStyle style, std::string_view text) const {
    const bool isPlain = !hasColour_ || style == TextStyle::plain || text.empty();
    return isPlain ? std::string(text) : fmt::format("\x1b[{}m{}\x1b[0m", codeOf(style), text);
}

std::string Output::added(std::int64_t bytes) const {
    return styled(TextStyle::added, signedByteAmount(bytes));
}
std::string Output::freed(std::int64_t bytes) const {
    return styled(TextStyle::freed, signedByteAmount(-bytes));
}
std::string Output::emphasized(std::string_view text) const {
    return styled(TextStyle::emphasized, text);
}

bool Output::flush() {
    endProgress();
    if (std::fflush(stdout) != 0) noteFailure(errno);
    return !hasFailed_;
}

void Output::write(std::FILE* stream, std::string_view text) {
    if (text.empty()) return;  // it may have no address, which fwrite(3) must not be given
    if (std::fwrite(text.data(), 1, text.size(), stream) < text.size()) noteFailure(errno);
}

void Output::noteFailure(int error) {
    if (error != EPIPE) hasFailed_ = true;
}

}  // namespace brindle
