#pragma once

#include "e2e/Screen.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace brindle {

/// A tray on a desktop, and the person in front of it. It goes when this goes.
class Tray {
public:
    explicit Tray(const Screen& screen);

    /// Name, status, icon and menu of the item in it; null when there is none.
    [[nodiscard]] nlohmann::json item() const;
    /// Whether the item's name comes to be this within any reasonable time.
    [[nodiscard]] bool shows(const std::string& title) const;

    /// The entries that show, separators left out; those that cannot be chosen are in brackets.
    [[nodiscard]] std::vector<std::string> menu() const;
    /// Whether such an entry comes to be in the menu.
    [[nodiscard]] bool offers(const std::string& entry) const;
    /// False when there is no such entry that can be chosen.
    [[nodiscard]] bool choose(const std::string& label) const;
    void click() const;

private:
    [[nodiscard]] ProgramResult run(std::vector<std::string> arguments) const;

    const Screen& screen_;
    std::unique_ptr<RunningProgram> host_;
};

}  // namespace brindle
