#pragma once

namespace CLI {
class App;
}

namespace brindle {

/// Lets --help say what there is to say and nothing of how it is parsed, in 80 columns. For a program that
/// has no commands yet: they take it over.
void shapeHelp(CLI::App& app);

/// Gives the help of every command an example of its use. For a program whose commands have been added.
void giveExamples(CLI::App& app);

}  // namespace brindle
