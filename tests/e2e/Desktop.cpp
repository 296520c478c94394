#include "e2e/Desktop.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <utility>

namespace brindle {
namespace {

namespace fs = std::filesystem;

bool isConnected(const nlohmann::json& location) {
    return location["status"] == "active";
}

}  // namespace

Desktop::Desktop() {
    fs::create_directories(brindle.settingsFile().parent_path());
    fs::create_directory(runtimeFolder());
    fs::permissions(runtimeFolder(), fs::perms::owner_all);
    std::ofstream(brindle.settingsFile()) << R"({"startupSetupCompleted": true})";
}

std::string Desktop::terminal(const std::vector<std::string>& arguments) const {
    ProgramLaunch launch = brindle.launch(arguments);
    std::erase(launch.environment, "TZ=UTC");
    const auto result = runProgram(launch);
    EXPECT_EQ(result.exitCode, 0) << result.error;
    return result.output;
}

nlohmann::json Desktop::json(std::vector<std::string> arguments) const {
    arguments.emplace_back("--json");
    return nlohmann::json::parse(terminal(arguments));
}

void Desktop::track(const std::vector<fs::path>& folders) const {
    std::vector<std::string> arguments{"include"};
    arguments.insert(arguments.end(), folders.begin(), folders.end());
    (void)terminal(arguments);
    (void)terminal({"check"});
}

ProgramLaunch Desktop::launch() const {
    ProgramLaunch launch = brindle.launch({});
    std::erase(launch.environment, "TZ=UTC");
    launch.arguments = {BRINDLE_DESKTOP_PROGRAM, "-BrindleDataDirectory", brindle.dataDirectory().native()};
    launch.setVariable("QT_QPA_PLATFORM", "offscreen");
    launch.setVariable("XDG_RUNTIME_DIR", runtimeFolder().native());
    launch.setVariable("DBUS_SESSION_BUS_ADDRESS", session.address());
    launch.setVariable("DBUS_SYSTEM_BUS_ADDRESS", system.address());
    return launch;
}

bool Desktop::act(const char* action) {
    auto call = QDBusMessage::createMethodCall("org.brindle.brindle", "/org/brindle/brindle",
                                               "org.freedesktop.Application", "ActivateAction");
    call << action << QVariantList() << QVariantMap();
    return session.connect().call(call).type() == QDBusMessage::ReplyMessage;
}

ProgramResult Desktop::quit() {
    EXPECT_TRUE(act("quit"));
    return std::exchange(program, nullptr)->wait();
}

void Desktop::check() {
    expectCheckAfter([this] { EXPECT_TRUE(act("check-now")); });
}

void Desktop::expectCheckAfter(const std::function<void()>& cause) {
    EXPECT_TRUE(eventually([this] { return isAtRest(); }));
    const auto before = ofLocations("lastCheckAt");
    cause();
    EXPECT_TRUE(eventually([&] {
        const nlohmann::json locations = json({"status"})["locations"];
        return std::ranges::all_of(locations, [&](const nlohmann::json& location) {
            return !isConnected(location) || location["lastCheckAt"] != before.at(location["name"]);
        });
    }));
    EXPECT_TRUE(eventually([this] { return isAtRest(); }));
}

std::map<std::string, nlohmann::json> Desktop::ofLocations(const char* field) const {
    std::map<std::string, nlohmann::json> values;
    const nlohmann::json status = json({"status"});
    for (const nlohmann::json& location : status["locations"]) values[location["name"]] = location[field];
    return values;
}

bool Desktop::isAtRest() const {
    return !json({"status"})["otherProgramIsChecking"];
}

}  // namespace brindle
