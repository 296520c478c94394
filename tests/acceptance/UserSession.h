#pragma once

#include "support/Program.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

/// What a user has logged in to, for the program in this process: a home folder, a screen with a window
/// manager, and the two buses, all told to this process by its environment.
class UserSession {
public:
    /// To be made before the application object. Throws std::runtime_error when something does not come up.
    UserSession();

    [[nodiscard]] std::filesystem::path home() const { return folder_.path() / "home"; }
    [[nodiscard]] std::filesystem::path prefix() const { return folder_.path() / "prefix"; }
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }

    /// For other programs of the session.
    [[nodiscard]] ProgramLaunch launch(std::vector<std::string> arguments) const;

private:
    /// Starts a service of the session, and gives the line that it says when it is there.
    std::string begin(ProgramLaunch launch, const std::string& name);
    std::string beginBus(const std::string& name);

    TempFolder folder_;
    std::vector<std::unique_ptr<RunningProgram>> services_;
};

}  // namespace brindle
