#pragma once

#include "model/Walk.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace brindle {

/// Writes results to standard output and sentences about them to standard error. Colour and progress are for
/// terminals only; NO_COLOR (no-color.org) and TERM=dumb are honoured.
class Output {
public:
    Output();

    void line(std::string_view text = {});
    void json(const nlohmann::ordered_json& result);
    /// One of several results, each on a line of its own.
    void jsonLine(const nlohmann::ordered_json& result);

    /// A sentence for a person, beside the results.
    void sentence(std::string_view text);

    /// Says that the results are of the example history, now in a sentence and in all JSON that follows.
    void tellOfExample();

    /// One line that is written over by the next, on a terminal; nothing otherwise.
    void progress(std::string_view locationName, const ScanProgress& progress);
    void estimating(std::string_view locationName);
    void endProgress();

    /// An amount in a column of ten, with its sign, in the colour of added or freed.
    [[nodiscard]] std::string amountColumn(std::int64_t byteDelta) const;
    [[nodiscard]] std::string added(std::int64_t bytes) const;
    [[nodiscard]] std::string freed(std::int64_t bytes) const;
    [[nodiscard]] std::string emphasized(std::string_view text) const;

    /// Hands everything to the system. False when something could not be written, now or before; a reader
    /// that went away (a closed pipe) is no failure.
    [[nodiscard]] bool flush();

private:
    void showProgress(const std::string& text);
    void write(std::FILE* stream, std::string_view text);
    void noteFailure(int error);
    /// As one line when `indent` is negative.
    void writeJson(nlohmann::ordered_json result, int indent);
    [[nodiscard]] std::string styled(std::string_view code, std::string_view text) const;

    bool isExample_ = false;
    bool hasColour_ = false;
    bool showsProgress_ = false;
    std::size_t progressWidth_ = 0;  // columns of the progress line that stands there now
    bool hasFailed_ = false;
};

}  // namespace brindle
