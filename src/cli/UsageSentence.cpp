#include "cli/UsageSentence.h"

#include "model/FileNameText.h"
#include "model/Translation.h"

#include <CLI/CLI.hpp>

namespace brindle {
namespace {

template <class Error>
bool is(const CLI::ParseError& error) {
    return dynamic_cast<const Error*>(&error) != nullptr;
}

std::string unexpectedText(const CLI::App& app, const std::string& first) {
    const char* sentence = translated("“{}” is one argument too many.");
    if (first.starts_with('-'))
        sentence = translated("There is no option “{}”.");
    else if (app.get_subcommands().empty())
        sentence = translated("There is no command “{}”.");
    return filled(sentence, fileNameText(first));
}

}  // namespace

std::string usageSentence(const CLI::App& app, const CLI::ParseError& error) {
    const auto unexpected = app.remaining(true);
    if (is<CLI::ExtrasError>(error) && !unexpected.empty()) return unexpectedText(app, unexpected.front());

    // It repeats what was typed, which a shell may have made of the name of a file; what it is about comes
    // first.
    std::string told = fileNameText(error.what());
    const std::string name = told.substr(0, told.find_first_of(": "));
    if (is<CLI::RequiredError>(error)) return filled(translated("{} is missing."), name);
    if (is<CLI::ExcludesError>(error))
        return filled(translated("{0} and {1} can't be given together."), name,
                      told.substr(told.find_last_of(' ') + 1));
    if (is<CLI::ArgumentMismatch>(error))
        return filled(told.ends_with("missing") ? translated("{} needs a value.")
                                                : translated("{} can be given only once."),
                      name);
    return told;
}

}  // namespace brindle
