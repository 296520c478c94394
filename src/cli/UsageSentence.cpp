#include "cli/UsageSentence.h"

#include "model/FileNameText.h"
#include "model/Translation.h"

#include <CLI/CLI.hpp>

namespace brindle {

std::string usageSentence(const CLI::App& app, const CLI::ParseError& error) {
    const auto unexpected = app.remaining(true);
    // It repeats what was typed, which a shell may have made of the name of a file.
    if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr || unexpected.empty())
        return fileNameText(error.what());
    const std::string& first = unexpected.front();
    const char* sentence = translated("“{}” is one argument too many.");
    if (first.starts_with('-'))
        sentence = translated("There is no option “{}”.");
    else if (app.get_subcommands().empty())
        sentence = translated("There is no command “{}”.");
    return filled(sentence, fileNameText(first));
}

}  // namespace brindle
