#include "cli/Completions.h"

#include "cli/ValueChecks.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {
namespace {

using Words = std::vector<std::string>;

std::string replaced(std::string_view text, std::string_view characters, std::string_view before) {
    std::string escaped;
    for (const char c : text) {
        if (characters.find(c) != characters.npos) escaped += before;
        escaped += c;
    }
    return escaped;
}

/// In single quotes, as all three shells have them.
std::string inQuotes(std::string_view text) {
    std::string inner;
    for (const char c : text) inner += c == '\'' ? "'\\''" : std::string(1, c);
    return "'" + inner + "'";
}

/// What can stand for an option's value, or for an argument.
struct Values {
    std::string name;
    Words words;
    bool areFolders = false;
    bool areFiles = false;
};

struct Option {
    Words names;  // "--output", "-o"; empty for an argument
    std::string description;
    bool takesValue = false;
    bool isRepeated = false;
    Values values;
};

struct Command {
    std::string name;
    std::string description;
    std::vector<Option> options;
    std::vector<Option> arguments;
};

Values valuesOf(const CLI::Option& option) {
    // "ORDER:{largest,newest,name}": the name, and what is checked.
    const std::string type = option.get_type_name();
    Values values{.name = option.get_positional() ? option.get_name() : type.substr(0, type.find(':'))};
    if (const auto begin = type.find('{'); begin != type.npos)
        values.words = CLI::detail::split(type.substr(begin + 1, type.find('}') - begin - 1), ',');
    if (values.name == "DAY") values.words = {"today", "yesterday"};
    values.areFiles = values.name == "FILE";
    values.areFolders = std::ranges::count(Words{"DIR", "FOLDER", "LOCATION", "PATH"}, values.name) > 0;
    return values;
}

Option optionFrom(const CLI::Option& option) {
    Option result{.description = option.get_description(),
                  .takesValue = !option.get_type_name().empty(),
                  .isRepeated = option.get_expected_max() > 1,
                  .values = valuesOf(option)};
    for (const std::string& name : option.get_lnames()) result.names.push_back("--" + name);
    for (const std::string& name : option.get_snames()) result.names.push_back("-" + name);
    return result;
}

Command commandFrom(const CLI::App& app) {
    Command command{.name = app.get_name(), .description = app.get_description()};
    for (const CLI::Option* option : app.get_options())
        if (!option->get_group().empty())
            (option->get_positional() ? command.arguments : command.options).push_back(optionFrom(*option));
    return command;
}

/// The whole command line: the program itself, whose options go with every command, and its commands.
struct CommandLine {
    Command program;
    std::vector<Command> commands;

    [[nodiscard]] Words commandNames() const {
        Words names;
        for (const Command& command : commands) names.push_back(command.name);
        return names;
    }
    /// Those of a command, and those that go with every command.
    [[nodiscard]] std::vector<Option> optionsOf(const Command& command) const {
        std::vector<Option> options = command.options;
        for (const Option& option : program.options)
            if (std::ranges::none_of(options, [&](const Option& own) { return own.names == option.names; }))
                options.push_back(option);
        return options;
    }
};

CommandLine commandLineOf(const CLI::App& app) {
    CommandLine line{.program = commandFrom(app)};
    std::erase_if(line.program.options,
                  [](const Option& option) { return std::ranges::count(option.names, "--version") > 0; });
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        line.commands.push_back(commandFrom(*command));
    return line;
}

std::string bashAction(const Values& values) {
    std::string action;
    if (!values.words.empty()) action += fmt::format(" _brindle_words '{}';", fmt::join(values.words, " "));
    if (values.areFolders) action += " _brindle_paths -d;";
    if (values.areFiles) action += " _brindle_paths -f;";
    return action;
}

std::string bashCommand(const CommandLine& line, const Command& command) {
    std::string text = fmt::format("    {})\n        case $previous in\n", command.name);
    Words names;
    for (const Option& option : line.optionsOf(command)) {
        names.insert(names.end(), option.names.begin(), option.names.end());
        if (option.takesValue)
            text += fmt::format("        {}){} return ;;\n", fmt::join(option.names, " | "),
                                bashAction(option.values));
    }
    std::string arguments;
    for (const Option& argument : command.arguments) arguments += bashAction(argument.values);
    return text + fmt::format(
                      "        esac\n"
                      "        case $word in\n"
                      "        -*) _brindle_words '{}' ;;\n"
                      "        *){} ;;\n"
                      "        esac\n"
                      "        ;;\n",
                      fmt::join(names, " "), arguments);
}

std::string bashCompletion(const CommandLine& line) {
    std::string text = fmt::format(
        R"(# bash completion for brindle, printed by brindle --completion bash

_brindle_words() {{
    local found
    mapfile -t found < <(compgen -W "$1" -- "$word")
    COMPREPLY+=("${{found[@]}}")
}}

_brindle_paths() {{
    local found
    compopt -o filenames
    mapfile -t found < <(compgen "$1" -- "$word")
    COMPREPLY+=("${{found[@]}}")
}}

_brindle() {{
    local word=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}} command='' i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${{COMP_WORDS[i]}} in
        {}) command=${{COMP_WORDS[i]}} && break ;;
        esac
    done
    case $command in
)",
        fmt::join(line.commandNames(), " | "));
    for (const Command& command : line.commands) text += bashCommand(line, command);
    Command program = line.program;
    program.name = "*";
    program.arguments = {{.values = {.words = line.commandNames()}}};
    return text + bashCommand({.program = program}, program) +
           "    esac\n}\n\ncomplete -F _brindle brindle\n";
}

std::string zshText(std::string_view text) {
    return replaced(text, "\\[]:", "\\");
}

std::string zshValues(const Values& values) {
    const auto description = values.name.empty() ? " " : values.name;
    if (values.areFolders) return fmt::format(":{}:_files -/", description);
    if (values.areFiles) return fmt::format(":{}:_files", description);
    return fmt::format(":{}:({})", description, fmt::join(values.words, " "));
}

std::string zshArguments(const std::vector<Option>& options, const std::vector<Option>& arguments) {
    std::string text;
    for (const Option& option : options)
        for (const std::string& name : option.names)
            text += fmt::format(" \\\n            {}",
                                inQuotes(fmt::format("{}[{}]{}", name, zshText(option.description),
                                                     option.takesValue ? zshValues(option.values) : "")));
    for (const Option& argument : arguments)
        text += fmt::format(" \\\n            {}",
                            inQuotes((argument.isRepeated ? "*" : "") + zshValues(argument.values)));
    return text;
}

std::string zshCompletion(const CommandLine& line) {
    std::string text =
        "#compdef brindle\n# zsh completion for brindle, printed by brindle --completion zsh\n\n"
        "_brindle() {\n    local curcontext=$curcontext state line\n    local -a commands=(\n";
    for (const Command& command : line.commands)
        text += fmt::format("        {}\n", inQuotes(command.name + ":" + zshText(command.description)));
    text += "    )\n    _arguments -C" + zshArguments(line.program.options, {}) +
            " \\\n            '1: :->command' \\\n            '*:: :->arguments'\n"
            "    case $state in\n    command) _describe command commands ;;\n"
            "    arguments)\n        case $words[1] in\n";
    for (const Command& command : line.commands)
        text += fmt::format("        {}) _arguments{} ;;\n", command.name,
                            zshArguments(line.optionsOf(command), command.arguments));
    return text + "        esac\n        ;;\n    esac\n}\n\n_brindle \"$@\"\n";
}

std::string fishValues(const Option& option) {
    Words words = option.values.words;
    if (option.values.areFolders) words.emplace_back("(__fish_complete_directories)");
    std::string text = words.empty() ? "" : " -a " + inQuotes(fmt::format("{}", fmt::join(words, " ")));
    if (option.values.areFiles) text += " -F";
    return text;
}

std::string fishOption(const Option& option, const std::string& condition) {
    std::string text = "complete -c brindle" + condition;
    for (const std::string& name : option.names)
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (option.takesValue) text += (option.values.areFiles ? " -r" : " -x") + fishValues(option);
    return text + " -d " + inQuotes(option.description) + "\n";
}

std::string fishCompletion(const CommandLine& line) {
    std::string text =
        "# fish completion for brindle, printed by brindle --completion fish\n\n"
        "complete -c brindle -f\n";
    for (const Option& option : line.program.options) text += fishOption(option, "");
    for (const Command& command : line.commands) {
        text += fmt::format("complete -c brindle -n __fish_use_subcommand -a {} -d {}\n", command.name,
                            inQuotes(command.description));
        const auto condition = " -n " + inQuotes("__fish_seen_subcommand_from " + command.name);
        for (const Option& argument : command.arguments)
            text += "complete -c brindle" + condition + fishValues(argument) + "\n";
        for (const Option& option : command.options)
            if (std::ranges::count(option.names, "--help") == 0) text += fishOption(option, condition);
    }
    return text;
}

}  // namespace

void addCompletionOption(CLI::App& app) {
    app.add_option_function<std::string>("--completion",
                                         [&app](const std::string& shell) {
                                             const CommandLine line = commandLineOf(app);
                                             const auto text = shell == "bash"  ? bashCompletion(line)
                                                               : shell == "zsh" ? zshCompletion(line)
                                                                                : fishCompletion(line);
                                             throw CLI::CallForVersion(text, 0);
                                         })
        ->check(oneOf({"bash", "zsh", "fish"}))
        ->type_name("SHELL")
        ->group("");
}

}  // namespace brindle
