#pragma once

#include "support/Program.h"

#include <filesystem>
#include <string>
#include <vector>

namespace brindle {

/// What a program asks the system for that is about files and connections, as strace(1) sees it.
class SystemCalls {
public:
    struct Call {
        std::string name;
        std::string line;  // the call with its arguments, paths spelled out

        [[nodiscard]] bool isAbout(const std::filesystem::path& path) const {
            return line.find(path.native()) != line.npos;
        }
        [[nodiscard]] bool opensWithoutReading() const;  // a folder, or only a place
        /// Makes, changes or removes a file, or opens it so that it could be changed.
        [[nodiscard]] bool writes() const;
        /// Has to do with a connection that could lead to another computer.
        [[nodiscard]] bool leadsOutside() const;
    };

    /// The same launch under strace, which writes to `trace`.
    [[nodiscard]] static ProgramLaunch traced(ProgramLaunch launch, const std::filesystem::path& trace);

    /// What `trace` holds; nothing when there is no strace, or it may not trace.
    [[nodiscard]] static std::vector<Call> in(const std::filesystem::path& trace);
};

/// Fails the test when the calls lead outside, open a file in `tree`, or write anywhere else than in `own`.
/// Gives how many folders of the tree they opened.
int expectPrivate(const std::vector<SystemCalls::Call>& calls, const std::filesystem::path& tree,
                  const std::vector<std::filesystem::path>& own);

}  // namespace brindle
