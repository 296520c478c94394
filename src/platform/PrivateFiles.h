#pragma once

#include <string>

// Files that only their owner may read, whatever the process's umask. Every failure is a
// std::system_error whose message holds the path.

namespace brindle {

/// Makes the folder and whichever of its parents are missing, each with mode 0700. A folder that is there
/// keeps its mode.
void createPrivateDirectory(const std::string& path);

/// Makes an empty file with mode 0600. A file that is there is left as it is; a symbolic link at the last
/// component, or anything else that is no regular file, is refused.
void createPrivateFile(const std::string& path);

/// Throws when the path is a symbolic link: what is written to it would be written elsewhere.
void refuseLink(const std::string& path);

/// Throws when the file, which is there, may not be read and written.
void requireWritableFile(const std::string& path);

/// Returns once the file's contents and its name in its folder are on the disk.
void syncToDisk(const std::string& path);

/// Gives the file `from` the name `to`, in place of a file of that name, and returns once that is on the
/// disk: after a crash `to` is the old file or the new one. Both names lie on one file system.
void replaceFile(const std::string& from, const std::string& to);

/// The same where no file has that name; fails with EEXIST where one has.
void placeFile(const std::string& from, const std::string& to);

}  // namespace brindle
