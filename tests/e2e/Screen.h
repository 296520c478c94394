#pragma once

#include "e2e/Desktop.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// A screen with a window manager, on which the program's window opens, and a person in front of it: who sees
/// what a screen reader reads, types, and clicks.
class Screen {
public:
    /// An element of a window, as a screen reader finds it.
    struct Element {
        std::string name;
        std::string role;
        std::vector<std::string> states;
        int x = 0;  // of its middle, on the screen
        int y = 0;

        [[nodiscard]] bool is(const char* state) const;
    };

    /// The desktop's program is not started yet. Throws std::runtime_error when the screen does not come up.
    explicit Screen(Desktop& desktop);

    /// For the program under test.
    [[nodiscard]] ProgramLaunch launch() const;
    void start() { desktop_.program = std::make_unique<RunningProgram>(launch()); }

    /// Everything that shows, in reading order.
    [[nodiscard]] std::vector<Element> elements() const;
    /// The element with this name that shows now.
    [[nodiscard]] std::optional<Element> named(const std::string& name) const;
    /// Whether it comes to show within any reasonable time; the name may also be the beginning of it, with
    /// "…" at the end.
    [[nodiscard]] bool shows(const std::string& name) const;
    [[nodiscard]] bool hides(const std::string& name) const;

    void press(const std::string& keys) const;  // "ctrl+f", as xdotool(1) names keys
    void type(const std::string& text) const;
    /// With the mouse, in the middle of the element. It must show.
    void click(const std::string& name) const;
    /// As a screen reader does it. False when the element has no such action.
    [[nodiscard]] bool activate(const std::string& name) const;

    /// Runs a program of the desktop's to its end.
    ProgramResult run(std::vector<std::string> arguments) const;

private:
    [[nodiscard]] bool hasWindowManager() const;

    Desktop& desktop_;
    std::string display_;  // ":7"
    std::unique_ptr<RunningProgram> server_;
    std::unique_ptr<RunningProgram> windowManager_;
    std::unique_ptr<RunningProgram> accessibility_;
};

}  // namespace brindle
