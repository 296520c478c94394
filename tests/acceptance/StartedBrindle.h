#pragma once

#include "acceptance/TestTime.h"
#include "app/desktop/DesktopProgram.h"
#include "app/desktop/SingleInstance.h"
#include "ui/DesktopSurfaces.h"

#include <memory>

namespace brindle {

/// The desktop program in this process, from its start to its end, put together as its own main() does, but
/// with a clock and a timer that the test moves.
class StartedBrindle {
public:
    /// Starts as from the applications menu, and waits for the window.
    explicit StartedBrindle(TestTime& time);
    ~StartedBrindle();
    StartedBrindle(const StartedBrindle&) = delete;
    StartedBrindle& operator=(const StartedBrindle&) = delete;

    [[nodiscard]] AppModel& model() { return program_->model(); }
    [[nodiscard]] DesktopSurfaces& surfaces() { return *surfaces_; }
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }

private:
    SingleInstance instance_;
    std::unique_ptr<DesktopProgram> program_;
    std::unique_ptr<DesktopSurfaces> surfaces_;
    bool hasEnded_ = false;
};

}  // namespace brindle
