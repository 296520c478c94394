#pragma once

#include <string>

namespace brindle {

/// Turns this process into the program of that name, without arguments: the one that is installed beside the
/// running program, or else the one in PATH. Returns when neither can be started.
void becomeProgram(const std::string& name);

}  // namespace brindle
