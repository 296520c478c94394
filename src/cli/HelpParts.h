#pragma once

namespace CLI {
class App;
}

namespace brindle {

/// Gives the headings and marks of --help the user's language; for a program whose commands have been added.
void nameHelpParts(CLI::App& app);

}  // namespace brindle
