#include "settings/WindowLock.h"

#include "platform/Paths.h"

namespace brindle {
namespace {

std::string pathOf(const std::string& dataDirectory) {
    return joinedPath(dataDirectory, "window.lock");
}

}  // namespace

std::optional<FileLock> tryToTakeWindowLock(const std::string& dataDirectory) {
    return FileLock::tryToTake(pathOf(dataDirectory));
}

bool isWindowRunning(const std::string& dataDirectory) {
    return FileLock::isTaken(pathOf(dataDirectory));
}

}  // namespace brindle
