#pragma once

#include "cli/Context.h"
#include "cli/ExitCode.h"
#include "model/Translation.h"

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace brindle {

/// A command with its arguments, ready to run.
using Command = std::function<ExitCode(const Context&)>;

/// Register the commands that track and check, those that look after the history's file, and those that only
/// read. The one that the command line names
/// becomes `chosen`, which must outlive the parsing.
void addTrackingCommands(CLI::App& app, Command& chosen);
void addCareCommands(CLI::App& app, Command& chosen);
void addReadingCommands(CLI::App& app, Command& chosen);

/// What the parser calls when it meets a command whose arguments it reads into `*options`.
template <class Run, class Options>
[[nodiscard]] auto choosing(Command& chosen, Run run, const Options& options) {
    return [=, &chosen] { chosen = [=](const Context& context) { return run(context, *options); }; };
}

/// An empty path is the value of a variable that was not set, and never the working folder.
[[nodiscard]] inline std::string emptyPathObjection(const std::string& path) {
    return path.empty() ? translated("A path is empty.") : "";
}

}  // namespace brindle
