#include "e2e/Screen.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace brindle {
namespace {

constexpr const char* program = "Brindle";  // as it calls itself on the bus

/// The text of a file, without its last newline.
std::string lineOf(const std::filesystem::path& file) {
    std::string line;
    std::ifstream stream(file);
    std::getline(stream, line);
    return stream.eof() ? std::string() : line;
}

bool matches(const std::string& name, const std::string& wanted) {
    const std::string_view more = "…";
    return name == wanted ||
           (wanted.ends_with(more) && name.starts_with(wanted.substr(0, wanted.size() - more.size())));
}

}  // namespace

bool Screen::Element::is(const char* state) const {
    return std::ranges::find(states, state) != states.end();
}

Screen::Screen(Desktop& desktop) : desktop_(desktop) {
    const auto number = desktop.brindle.home() / "display";
    // Else the server begins anew whenever its last client leaves, and turns away who comes at that moment.
    ProgramLaunch server{.arguments = {"Xvfb", "-displayfd", "1", "-screen", "0", "1440x900x24", "-nolisten",
                                       "tcp", "-noreset"},
                         .environment = {}};
    const FileDescriptor output(open(number.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    server.output = output.get();
    server_ = std::make_unique<RunningProgram>(server);
    if (!eventually([&] { return !lineOf(number).empty(); })) throw std::runtime_error("there is no screen");
    display_ = ":" + lineOf(number);

    const auto service = [&](std::vector<std::string> arguments) {
        ProgramLaunch launch = this->launch();
        launch.arguments = std::move(arguments);
        return std::make_unique<RunningProgram>(launch);
    };
    windowManager_ = service({"openbox", "--sm-disable"});
    if (!eventually([&] { return hasWindowManager(); }))
        throw std::runtime_error("there is no window manager");
    accessibility_ = service({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"});
    static_cast<void>(desktop.session.connect());
    if (!eventually([&] { return desktop.session.hasService("org.a11y.Bus"); }))
        throw std::runtime_error("there is no bus for screen readers");
}

ProgramLaunch Screen::launch() const {
    ProgramLaunch launch = desktop_.launch();
    launch.setVariable("QT_QPA_PLATFORM", "xcb");
    launch.setVariable("QT_QUICK_BACKEND", "software");
    launch.setVariable("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    launch.setVariable("DISPLAY", display_);
    // The keyboard library reads names that the X server sent without an end, up to the length that it was
    // told.
    if (const char* options = std::getenv("ASAN_OPTIONS"))
        launch.setVariable("ASAN_OPTIONS", std::string(options) + ":strict_string_checks=0");
    return launch;
}

ProgramResult Screen::run(std::vector<std::string> arguments) const {
    ProgramLaunch launch = this->launch();
    launch.arguments = std::move(arguments);
    return runProgram(launch);
}

bool Screen::hasWindowManager() const {
    return run({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"}).output.find("window id") != std::string::npos;
}

std::vector<Screen::Element> Screen::elements() const {
    const auto answer = run({"/usr/bin/python3", BRINDLE_READ_WINDOW, program});
    std::vector<Element> elements;
    for (const auto& element : nlohmann::json::parse(answer.output)) {
        const auto& box = element["box"];
        elements.push_back({.name = element["name"],
                            .role = element["role"],
                            .states = element["states"],
                            .x = box.is_null() ? 0 : box[0].get<int>() + box[2].get<int>() / 2,
                            .y = box.is_null() ? 0 : box[1].get<int>() + box[3].get<int>() / 2});
    }
    return elements;
}

std::optional<Screen::Element> Screen::named(const std::string& name) const {
    const auto all = elements();
    const auto found =
        std::ranges::find_if(all, [&](const Element& element) { return matches(element.name, name); });
    return found != all.end() ? std::optional(*found) : std::nullopt;
}

bool Screen::shows(const std::string& name) const {
    return eventually([&] { return named(name).has_value(); });
}

bool Screen::hides(const std::string& name) const {
    return eventually([&] { return !named(name).has_value(); });
}

void Screen::press(const std::string& keys) const {
    EXPECT_EQ(run({"xdotool", "key", "--clearmodifiers", keys}).exitCode, 0);
}

void Screen::type(const std::string& text) const {
    EXPECT_EQ(run({"xdotool", "type", text}).exitCode, 0);
}

void Screen::click(const std::string& name) const {
    // A click goes where the element rests: what is still on its way would be missed.
    std::optional<Element> element;
    EXPECT_TRUE(eventually([&] {
        const auto before = std::exchange(element, named(name));
        return element && before && element->x == before->x && element->y == before->y;
    })) << name;
    if (!element) return;
    EXPECT_EQ(
        run({"xdotool", "mousemove", std::to_string(element->x), std::to_string(element->y), "click", "1"})
            .exitCode,
        0);
}

bool Screen::activate(const std::string& name) const {
    return run({"/usr/bin/python3", BRINDLE_READ_WINDOW, program, "press", name}).exitCode == 0;
}

}  // namespace brindle
