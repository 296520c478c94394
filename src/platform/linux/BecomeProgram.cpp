#include "platform/BecomeProgram.h"

#include "platform/Paths.h"

#include <unistd.h>

namespace brindle {

void becomeProgram(const std::string& name) {
    const std::string beside = joinedPath(parentPath(programFile()), name);
    ::execl(beside.c_str(), name.c_str(), nullptr);
    ::execlp(name.c_str(), name.c_str(), nullptr);
}

}  // namespace brindle
