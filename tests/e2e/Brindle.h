#pragma once

#include "support/Program.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace brindle {

/// The program under test, with a home folder and a history of its own.
class Brindle {
public:
    Brindle();

    /// `arguments` behind the program's name and the option that names the data directory.
    [[nodiscard]] ProgramLaunch launch(std::vector<std::string> arguments) const;
    [[nodiscard]] ProgramResult run(std::vector<std::string> arguments) const;
    /// Runs with --json. The result is discarded (is_discarded()) when the output is no JSON text.
    [[nodiscard]] nlohmann::json json(std::vector<std::string> arguments, int expectedExitCode = 0) const;

    /// From here on it runs without any rights of root. False when it cannot be started so.
    [[nodiscard]] bool giveUpRoot();

    [[nodiscard]] std::filesystem::path home() const { return folder_.path() / "home"; }
    [[nodiscard]] std::filesystem::path dataDirectory() const { return home() / "data"; }
    [[nodiscard]] std::filesystem::path settingsFile() const {
        return home() / "config/Brindle/preferences.json";
    }
    [[nodiscard]] std::filesystem::path historyFile() const { return dataDirectory() / "History.sqlite"; }

private:
    TempFolder folder_;
    std::vector<std::string> runner_;  // the program that runs it, with arguments
};

/// Makes a folder of the tests open to processes without rights.
void openToAll(const std::filesystem::path& folder);

void writeFile(const std::filesystem::path& file, std::size_t bytes);

}  // namespace brindle
