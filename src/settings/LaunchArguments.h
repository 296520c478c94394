#pragma once

#include <map>
#include <span>
#include <string>

namespace brindle {

/// Settings that hold for one launch and are never written: key to text.
using LaunchArguments = std::map<std::string, std::string>;

/// Reads the arguments of a program, without its name, in the form "-Key value". The last value of a key
/// counts. A key that is followed by nothing, or by something that begins with "-", is passed over, as are
/// arguments in other forms ("--option").
[[nodiscard]] LaunchArguments parseLaunchArguments(std::span<const char* const> arguments);

}  // namespace brindle
