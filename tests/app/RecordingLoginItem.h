#pragma once

#include "app/LoginItem.h"

#include <vector>

namespace brindle {

/// Keeps what was asked of it: true for each enable(), false for each disable(). Its status is what the test
/// sets.
class RecordingLoginItem final : public LoginItemControlling {
public:
    [[nodiscard]] LoginItemStatus status() const override { return currentStatus; }
    void enable() override { registrations.push_back(true); }
    void disable() override { registrations.push_back(false); }
    void openSystemSettings() override {}

    LoginItemStatus currentStatus = PlainLoginItemStatus::disabled;
    std::vector<bool> registrations;
};

}  // namespace brindle
