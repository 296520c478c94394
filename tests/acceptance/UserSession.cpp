#include "acceptance/UserSession.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <unistd.h>
#include <utility>

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr int descriptorOfLine = 1;

/// The first line of a file, without its end; empty while it is not whole.
std::string lineOf(const fs::path& file) {
    std::string line;
    std::ifstream stream(file);
    std::getline(stream, line);
    return stream.eof() ? std::string() : line;
}

ProgramLaunch inherited(std::vector<std::string> arguments) {
    ProgramLaunch launch{.arguments = std::move(arguments), .environment = {}};
    for (char** variable = environ; *variable != nullptr; ++variable)
        launch.environment.emplace_back(*variable);
    return launch;
}

}  // namespace

UserSession::UserSession() {
    const fs::path run = folder_.path() / "run";
    fs::create_directory(home());
    fs::create_directory(run);
    fs::permissions(run, fs::perms::owner_all);
    const auto set = [](const char* name, const std::string& value) { ::setenv(name, value.c_str(), 1); };
    set("HOME", home());
    set("XDG_RUNTIME_DIR", run);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CURRENT_DESKTOP", "WAYLAND_DISPLAY"})
        ::unsetenv(name);
    set("LC_ALL", "C.UTF-8");
    set("TZ", "UTC");
    set("DBUS_SESSION_BUS_ADDRESS", beginBus("session"));
    set("DBUS_SYSTEM_BUS_ADDRESS", beginBus("system"));
    const std::string number =
        begin(inherited({"Xvfb", "-displayfd", std::to_string(descriptorOfLine), "-screen", "0",
                         "1440x900x24", "-nolisten", "tcp", "-noreset"}),
              "display");
    set("DISPLAY", ":" + number);
    set("QT_QPA_PLATFORM", "xcb");
    set("QT_QUICK_BACKEND", "software");
    services_.push_back(std::make_unique<RunningProgram>(inherited({"openbox", "--sm-disable"})));
}

ProgramLaunch UserSession::launch(std::vector<std::string> arguments) const {
    return inherited(std::move(arguments));
}

std::string UserSession::begin(ProgramLaunch launch, const std::string& name) {
    const fs::path said = folder_.path() / name;
    const FileDescriptor output(open(said.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    launch.output = output.get();
    services_.push_back(std::make_unique<RunningProgram>(launch));
    for (int i = 0; i < 1000; ++i) {
        if (std::string line = lineOf(said); !line.empty()) return line;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    throw std::runtime_error("there is no " + name);
}

std::string UserSession::beginBus(const std::string& name) {
    const fs::path configuration = folder_.path() / (name + ".conf");
    std::ofstream(configuration) << "<busconfig><type>session</type><listen>unix:path="
                                 << (folder_.path() / (name + "-bus")).native()
                                 << "</listen><policy context='default'><allow send_destination='*'/>"
                                    "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>";
    return begin(inherited({"dbus-daemon", "--nofork", "--nopidfile", "--print-address=1",
                            "--config-file=" + configuration.native()}),
                 name);
}

}  // namespace brindle
