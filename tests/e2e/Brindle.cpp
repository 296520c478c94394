#include "e2e/Brindle.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr unsigned nobody = 65534;

}  // namespace

Brindle::Brindle() {
    fs::create_directory(home());
}

ProgramLaunch Brindle::launch(std::vector<std::string> arguments) const {
    ProgramLaunch launch{
        .arguments = runner_,
        .environment = {"HOME=" + home().native(), "XDG_DATA_HOME=" + (home() / "share").native(),
                        "XDG_CONFIG_HOME=" + (home() / "config").native(), "TZ=UTC", "LC_ALL=C.UTF-8",
                        "TERM=xterm"},
        .folder = home()};
    launch.arguments.insert(launch.arguments.end(),
                            {BRINDLE_PROGRAM, "--data-dir", dataDirectory().native()});
    launch.arguments.insert(launch.arguments.end(), arguments.begin(), arguments.end());
    for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"})
        if (const char* value = std::getenv(name))
            launch.environment.push_back(std::string(name) + "=" + value);
    return launch;
}

ProgramResult Brindle::run(std::vector<std::string> arguments) const {
    return runProgram(launch(std::move(arguments)));
}

nlohmann::json Brindle::json(std::vector<std::string> arguments, int expectedExitCode) const {
    arguments.emplace_back("--json");
    const auto result = run(std::move(arguments));
    EXPECT_EQ(result.exitCode, expectedExitCode) << result.error;
    auto json = nlohmann::json::parse(result.output, nullptr, false);
    EXPECT_FALSE(json.is_discarded()) << result.output;
    return json;
}

bool Brindle::giveUpRoot() {
    if (::geteuid() != 0) return true;
    const auto number = std::to_string(nobody);
    runner_ = {"setpriv", "--reuid=" + number, "--regid=" + number, "--clear-groups"};
    openToAll(folder_.path());
    if (::chown(home().c_str(), nobody, nobody) != 0) return false;
    return run({"--version"}).exitCode == 0;
}

void openToAll(const fs::path& folder) {
    fs::permissions(folder, fs::perms(0755));
}

void writeFile(const fs::path& file, std::size_t bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << std::string(bytes, 'x');
}

}  // namespace brindle
