#include "platform/WholeFile.h"

#include "platform/FileDescriptor.h"
#include "platform/PrivateFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace brindle {
namespace {

[[noreturn]] void fail(int error, const std::string& path) {
    throw std::system_error(error, std::generic_category(), path);
}

/// A file that goes again unless its name was given to another one.
class NewFile {
public:
    explicit NewFile(std::string path) : path_(std::move(path)) {
        removeFile();  // what a program left behind that was killed on the way
        createPrivateFile(path_);
    }
    ~NewFile() { removeFile(); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(std::string_view contents) const {
        const FileDescriptor file(::open(path_.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
        if (!file) fail(errno, path_);
        while (!contents.empty()) {
            const auto written = ::write(file.get(), contents.data(), contents.size());
            if (written < 0) fail(errno, path_);
            contents.remove_prefix(static_cast<std::size_t>(written));
        }
    }

private:
    void removeFile() const { ::unlink(path_.c_str()); }

    std::string path_;
};

}  // namespace

std::optional<std::string> readWholeFile(const std::string& path, std::size_t limit) {
    // A pipe in the file's place must not make anybody wait.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file && errno == ENOENT) return {};
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0) fail(errno, path);
    if (!S_ISREG(status.st_mode)) fail(EINVAL, path);

    std::string contents(limit + 1, '\0');
    std::size_t size = 0;
    while (size <= limit) {
        const auto part = ::read(file.get(), contents.data() + size, contents.size() - size);
        if (part < 0) fail(errno, path);
        if (part == 0) break;
        size += static_cast<std::size_t>(part);
    }
    if (size > limit) fail(EFBIG, path);
    contents.resize(size);
    return contents;
}

void writeWholeFile(const std::string& path, std::string_view contents) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) fail(ELOOP, path);
    const std::string next = path + ".new";
    const NewFile file(next);
    file.write(contents);
    syncToDisk(next);
    replaceFile(next, path);
}

}  // namespace brindle
