#include "cli/CommandHelp.h"

#include "cli/WrappedText.h"
#include "model/DisplayWidth.h"
#include "model/Translation.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brindle {
namespace {

constexpr std::size_t nameColumns = 28;
constexpr std::size_t textColumns = 80 - nameColumns;

std::string indented(std::string_view text) {
    std::string lines;
    for (const std::string& line : wrapped(text, textColumns))
        lines += (lines.empty() ? "" : "\n" + std::string(nameColumns, ' ')) + line;
    return lines;
}

class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter() { column_width(nameColumns); }

    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
        // What is not listed leaves an empty line.
        return CLI::detail::find_and_replace(CLI::Formatter::make_help(app, std::move(name), mode), "\n\n\n",
                                             "\n\n");
    }
    std::string make_description(const CLI::App* app) const override {
        return app->get_description() + "\n\n";
    }
    /// What the value of an option is called. What is required or optional is seen in the line above.
    std::string make_option_opts(const CLI::Option* option) const override {
        if (option->get_positional()) return "";
        const std::string name = option->get_type_name();
        const auto shown = name.substr(0, name.find(':'));  // then follow the names of what checks it
        return shown.empty() ? "" : " " + shown;
    }
    std::string make_option_desc(const CLI::Option* option) const override {
        return joined(wrapped(option->get_description(), textColumns));
    }
    std::string make_subcommand(const CLI::App* command) const override {
        const std::string name = "  " + command->get_name();
        const std::string gap(nameColumns - std::min(displayWidth(name), nameColumns), ' ');
        return fmt::format("{}{}{}\n", name, gap, indented(command->get_description()));
    }

private:
    static std::string joined(const std::vector<std::string>& lines) {
        return fmt::format("{}", fmt::join(lines, "\n"));
    }
};

struct Example {
    const char* command;
    const char* meaning;
};

/// By the name of the command.
std::multimap<std::string, Example> examples() {
    return {
        {"check", {"brindle check ~/Pictures", translated("include a folder and set its starting point")}},
        {"check", {"brindle check", translated("check every included location")}},
        {"check", {"brindle check --wait", translated("the same, after another program that checks")}},
        {"watch", {"brindle watch", translated("check now and on the interval of the settings")}},
        {"watch", {"brindle watch --json", translated("the same, a JSON object a line")}},
        {"include", {"brindle include ~/Music /media/ann/Disk", translated("a folder, and a whole drive")}},
        {"remove", {"brindle remove ~/Music", translated("what was recorded of it stays")}},
        {"forget", {"brindle forget ~/Music", translated("take back an inclusion")}},
        {"estimates", {"brindle estimates", translated("say whether they are on")}},
        {"estimates", {"brindle estimates on", translated("the next check makes them")}},
        {"doctor",
         {"brindle doctor", translated("Look whether the history is well, and say what is to be done")}},
        {"backup", {"brindle backup ~/brindle.sqlite", translated("Write a copy of the history to a file")}},
        {"restore",
         {"brindle restore ~/brindle.sqlite",
          translated("Put a backup in the history's place; the old one is kept")}},
        {"locations", {"brindle locations", translated("with size and last check")}},
        {"drives", {"brindle drives", translated("with what is free on them")}},
        {"status", {"brindle status", translated("how things stand now")}},
        {"status", {"brindle status --example", translated("of an example history, to look around")}},
        {"day", {"brindle day", translated("today")}},
        {"day", {"brindle day yesterday", translated("the day before")}},
        {"day", {"brindle day 2026-03-07 --json", translated("a certain day, for a program")}},
        {"changes", {"brindle changes", translated("what changed today, largest first")}},
        {"changes",
         {"brindle changes --since yesterday --added ~/Pictures", translated("what came to a folder")}},
        {"changes",
         {"brindle changes --since 2026-03-01 --search .mov", translated("what has this in its name")}},
        {"changes", {"brindle changes --day yesterday --folders", translated("folder by folder")}},
        {"trends", {"brindle trends week", translated("the last 7 days")}},
        {"trends",
         {"brindle trends quarter --day 2026-03-31 Pictures", translated("90 days of one location")}},
        {"grew", {"brindle grew --since yesterday", translated("yesterday and today")}},
        {"grew", {"brindle grew --over 5GB || echo \"It fills up\"", translated("in a script")}},
        {"export", {"brindle export", translated("today's statement, beside those before it")}},
        {"export", {"brindle export --since 2026-03-01 -o march.csv", translated("a period, to a file")}},
        {"export", {"brindle export -o - Pictures", translated("one location, to standard output")}},
    };
}

}  // namespace

void shapeHelp(CLI::App& app) {
    app.formatter(std::make_shared<HelpFormatter>());
}

void giveExamples(CLI::App& app) {
    const auto all = examples();
    for (CLI::App* command : app.get_subcommands({})) {
        const auto [first, last] = all.equal_range(command->get_name());
        std::size_t columns = 0;
        for (auto example = first; example != last; ++example)
            columns = std::max(columns, displayWidth(example->second.command));
        std::string footer = first == last ? "" : std::string(translated("Examples:"));
        for (auto example = first; example != last; ++example) {
            const std::string gap(columns - displayWidth(example->second.command) + 2, ' ');
            footer += fmt::format("\n  {}{}{}", example->second.command, gap, example->second.meaning);
        }
        const char* const everywhere =
            translated("--json, --example and --data-dir DIR go with every command: see brindle --help.");
        command->footer(fmt::format("{}{}{}", footer, footer.empty() ? "" : "\n\n", everywhere));
    }
}

}  // namespace brindle
