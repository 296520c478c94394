#pragma once

#include "support/Program.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <thread>

namespace brindle {

/// Whether the program has a folder open that lies below this one: it is walking there.
inline bool isWalking(const RunningProgram& program, const std::filesystem::path& tree) {
    std::error_code error;
    const std::filesystem::path descriptors = "/proc/" + std::to_string(program.id()) + "/fd";
    for (std::filesystem::directory_iterator next(descriptors, error), end; !error && next != end;
         next.increment(error)) {
        std::error_code isClosedNow;
        if (std::filesystem::read_symlink(next->path(), isClosedNow)
                .native()
                .starts_with(tree.native() + "/"))
            return true;
    }
    return false;
}

/// Waits until the program walks there. It may miss that, or be late.
inline void waitUntilWalking(const RunningProgram& program, const std::filesystem::path& tree) {
    while (!isWalking(program, tree) && program.isRunning()) std::this_thread::yield();
}

}  // namespace brindle
