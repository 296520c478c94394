#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace brindle {

/// A file that is written from its beginning to its end and counts only as a whole. Written any number of
/// times, then finished or discarded; one that is not finished when it goes is discarded.
/// Thread: one at a time. Failures are std::system_error with the path.
class OutputFile {
public:
    OutputFile() = default;
    virtual ~OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    virtual void write(std::string_view bytes) = 0;
    /// Returns once the file is whole at its destination and on the disk.
    virtual void finish() = 0;
    /// Leaves the destination as it was, and nothing beside it.
    virtual void discard() noexcept = 0;
};

/// Opens a file for the destination, an absolute path. What is written goes to a hidden file in the same
/// folder, ".NAME.UUID.partial" (NAME shortened where that would be too long), which takes the destination's
/// name when it is finished: at any moment, and after a crash, the destination is the old file or the new
/// one. Hidden files of the same name that a killed program left behind are removed first; one that another
/// program is writing stays.
///
/// A file at the destination hands its permissions and, where the system allows it, its owner on to the new
/// one; without one, the process's umask decides. A symbolic link stays and the file that it names is
/// replaced. A file that may not be written, and a folder, are refused. A pipe or a device is written as it
/// is: what it was given cannot be taken back.
[[nodiscard]] std::unique_ptr<OutputFile> openOutputFile(const std::string& destination);

/// Standard output, as a pipe would be written.
[[nodiscard]] std::unique_ptr<OutputFile> openStandardOutput();

}  // namespace brindle
