#include "settings/WindowLock.h"

#include "platform/Paths.h"

namespace brindle {

std::optional<FileLock> tryToTakeWindowLock(const std::string& dataDirectory) {
    return FileLock::tryToTake(joinedPath(dataDirectory, "window.lock"));
}

}  // namespace brindle
