#pragma once

namespace CLI {
class App;
}

namespace brindle {

/// Adds --completion SHELL, which --help does not list: it prints what lets bash, zsh or fish complete the
/// program's command lines, made of the commands and options that it has. For a program that has them all.
void addCompletionOption(CLI::App& app);

}  // namespace brindle
