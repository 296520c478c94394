#pragma once

#include "settings/LaunchOptions.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <variant>

namespace brindle {

class DesktopEntry;

/// The argument that tells a program that the session started it at login.
inline constexpr const char* launchedAtLoginArgument = "--launched-at-login";

struct LoginItemUnavailable {
    std::string message;  // why Brindle cannot be opened at login, in a sentence for the user

    bool operator==(const LoginItemUnavailable&) const = default;
};
enum class PlainLoginItemStatus {
    enabled,
    disabled,
    requiresApproval,  // only on systems where the user must approve of it
};
/// Whether Brindle opens at login.
using LoginItemStatus = std::variant<LoginItemUnavailable, PlainLoginItemStatus>;

/// A login item that could not be changed. It is as it was; what() is the sentence for the user.
class LoginItemError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Lets the user have Brindle open at login.
/// Thread: the main thread.
class LoginItemControlling {
public:
    LoginItemControlling() = default;
    virtual ~LoginItemControlling() = default;
    LoginItemControlling(const LoginItemControlling&) = delete;
    LoginItemControlling& operator=(const LoginItemControlling&) = delete;

    /// Read anew from the system with each call; never throws.
    [[nodiscard]] virtual LoginItemStatus status() const = 0;
    /// Both throw LoginItemError.
    virtual void enable() = 0;
    virtual void disable() = 0;
    /// Shows where the system lets the user approve; does nothing where there is no such page.
    virtual void openSystemSettings() = 0;
};

/// The entry in the user's autostart folder that the session reads at login. Others may edit it: it counts as
/// enabled when this session would start a program with it.
class SystemLoginItem final : public LoginItemControlling {
public:
    /// `program`: the file that the entry starts. `environment` tells the desktop (XDG_CURRENT_DESKTOP) and
    /// where programs are (PATH).
    SystemLoginItem(std::string entryPath, std::string program, Environment environment = environmentValue);

    /// For the running program. Throws std::system_error.
    [[nodiscard]] static SystemLoginItem ofUser();

    [[nodiscard]] LoginItemStatus status() const override;
    /// Mends a damaged entry. From one that others have edited, only what keeps it from being started is
    /// taken out.
    void enable() override;
    void disable() override;
    void openSystemSettings() override {}

private:
    [[nodiscard]] std::optional<DesktopEntry> readEntry() const;
    [[nodiscard]] bool canRun(const std::string& program) const;

    std::string entryPath_;
    std::string program_;
    Environment environment_;
};

/// Where there is nothing to open at login, and in tests of other things.
class UnavailableLoginItem final : public LoginItemControlling {
public:
    [[nodiscard]] LoginItemStatus status() const override;
    void enable() override {}
    void disable() override {}
    void openSystemSettings() override {}
};

}  // namespace brindle
