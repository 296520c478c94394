#include "e2e/Tray.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace brindle {
namespace {

std::vector<std::string> command(std::vector<std::string> arguments) {
    // The one that the system's packages are for, whatever else the user has in PATH.
    arguments.insert(arguments.begin(), {"/usr/bin/python3", BRINDLE_TRAY});
    return arguments;
}

}  // namespace

Tray::Tray(const Screen& screen) : screen_(screen) {
    ProgramLaunch launch = screen.launch();
    launch.arguments = command({"host"});
    host_ = std::make_unique<RunningProgram>(launch);
}

ProgramResult Tray::run(std::vector<std::string> arguments) const {
    return screen_.run(command(std::move(arguments)));
}

nlohmann::json Tray::item() const {
    // The tray itself may not be there yet.
    const auto item = nlohmann::json::parse(run({"item"}).output, nullptr, false);
    return item.is_discarded() ? nlohmann::json() : item;
}

bool Tray::shows(const std::string& title) const {
    return eventually([&] {
        const auto item = this->item();
        return !item.is_null() && item["title"] == title;
    });
}

std::vector<std::string> Tray::menu() const {
    std::vector<std::string> entries;
    const auto item = this->item();
    for (const auto& entry : item.value("menu", nlohmann::json::array())) {
        const auto label = entry["label"].get<std::string>();
        entries.push_back(entry["isEnabled"].get<bool>() ? label : "[" + label + "]");
    }
    return entries;
}

bool Tray::offers(const std::string& entry) const {
    return eventually([&] {
        const auto entries = menu();
        return std::ranges::find(entries, entry) != entries.end();
    });
}

bool Tray::choose(const std::string& label) const {
    return run({"press", label}).exitCode == 0;
}

void Tray::click() const {
    EXPECT_EQ(run({"activate"}).exitCode, 0);
}

}  // namespace brindle
