#pragma once

#include "app/PrivateBus.h"
#include "e2e/Brindle.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

/// The program with the window on a desktop of its own, which is never seen: a home folder, a session bus and
/// a system bus. What it keeps is read through the terminal program.
class Desktop {
public:
    Desktop();

    /// The terminal program, in the time zone of the system. Gives what it printed; it must succeed.
    std::string terminal(const std::vector<std::string>& arguments) const;
    [[nodiscard]] nlohmann::json json(std::vector<std::string> arguments) const;

    /// Includes the folders and checks them, as somebody did who has been through the setup.
    void track(const std::vector<std::filesystem::path>& folders) const;

    [[nodiscard]] ProgramLaunch launch() const;
    void start() { program = std::make_unique<RunningProgram>(launch()); }
    /// An action of the desktop entry. False when nobody takes it.
    [[nodiscard]] bool act(const char* action);
    /// Asks it to end, and gives the result.
    [[nodiscard]] ProgramResult quit();

    /// Has every location checked that is connected; ends when the run is over.
    void check();
    /// Does something that brings about a run of everything, and waits for its end.
    void expectCheckAfter(const std::function<void()>& cause);
    /// A field of each location's status, by its name.
    [[nodiscard]] std::map<std::string, nlohmann::json> ofLocations(const char* field) const;
    /// Waits for the end of a run, if there is one.
    [[nodiscard]] bool isAtRest() const;

    Brindle brindle;
    PrivateBus session;
    PrivateBus system;
    std::unique_ptr<RunningProgram> program;

private:
    [[nodiscard]] std::filesystem::path runtimeFolder() const { return brindle.home() / "run"; }
};

}  // namespace brindle
