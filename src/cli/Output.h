#pragma once

#include "model/Walk.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// What a text is, so that colour can tell it too.
enum class TextStyle { plain, added, freed, emphasized, faint };

/// Writes results to standard output and sentences about them to standard error. Colour and progress are for
/// terminals only; NO_COLOR (no-color.org) and TERM=dumb are honoured.
class Output {
public:
    Output();

    void line(std::string_view text = {});
    /// A sentence without colours, so many columns in, on as many lines as it takes on a terminal.
    void paragraph(std::string_view text, std::size_t indent = 0);
    /// A line with a name and where what it names lies, whose path is cut to what a terminal has room for.
    void heading(std::string_view name, std::string_view path);
    /// The text as it is, with no end of line.
    void text(std::string_view text);
    void json(const nlohmann::ordered_json& result);
    /// One of several results, each on a line of its own.
    void jsonLine(const nlohmann::ordered_json& result);

    /// A sentence for a person, beside the results.
    void sentence(std::string_view text);

    /// The sentence that stands in place of a result.
    void failure(std::string_view text);

    /// Says that the results are of the example history: before the first in a sentence, and in all JSON.
    void tellOfExample();

    /// One line that is written over by the next, on a terminal; nothing otherwise.
    void progress(std::string_view locationName, const ScanProgress& progress);
    void estimating(std::string_view locationName);
    void exporting(std::int64_t rows, std::int64_t allRows);
    void endProgress();

    /// The text in the colour of its style, where there are colours.
    [[nodiscard]] std::string styled(TextStyle style, std::string_view text) const;
    [[nodiscard]] std::string added(std::int64_t bytes) const;
    [[nodiscard]] std::string freed(std::int64_t bytes) const;
    [[nodiscard]] std::string emphasized(std::string_view text) const;

    /// The columns that a line of the result may take; absent where no terminal shows it.
    [[nodiscard]] std::optional<std::size_t> width() const { return width_; }

    /// Hands everything to the system. False when something could not be written, now or before; a reader
    /// that went away (a closed pipe) is no failure.
    [[nodiscard]] bool flush();

private:
    void showProgress(const std::string& text);
    void write(std::FILE* stream, std::string_view text);
    void noteFailure(int error);
    /// As one line when `indent` is negative.
    void writeJson(nlohmann::ordered_json result, int indent);

    void tellWhatIsDue();

    bool isExample_ = false;
    bool isExampleTold_ = false;
    bool hasColour_ = false;
    bool showsProgress_ = false;
    std::optional<std::size_t> width_;
    std::size_t progressWidth_ = 0;  // columns of the progress line that stands there now
    bool hasFailed_ = false;
};

}  // namespace brindle
