#pragma once

#include "model/UnixTime.h"
#include "platform/ByteLock.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace brindle {

/// The files of a history: the database, SQLite's log and the index of that log, and what is kept beside
/// them. Asks the system when it is asked; changes nothing.
class HistoryFiles {
public:
    explicit HistoryFiles(std::filesystem::path directory, std::string name = "History.sqlite")
        : directory_(std::move(directory)), name_(std::move(name)) {}

    [[nodiscard]] const std::filesystem::path& directory() const { return directory_; }
    [[nodiscard]] std::string database() const { return (directory_ / name_).string(); }
    [[nodiscard]] std::string log() const { return database() + "-wal"; }
    [[nodiscard]] std::string logIndex() const { return database() + "-shm"; }

    /// The log of a database that is to be recovered. While a recovery that was interrupted had the damaged
    /// file set aside already, its log is there.
    [[nodiscard]] std::string logForRecovery() const;

    /// A process that has the database open; 0 for one whose number cannot be told, nothing when none has.
    [[nodiscard]] std::optional<int> user() const;

private:
    std::filesystem::path directory_;
    std::string name_;
};

/// The path "History-<what>-2024-03-05T14-07-09Z.sqlite" in the directory, with the time in UTC.
[[nodiscard]] std::filesystem::path datedCopyPath(const std::filesystem::path& directory,
                                                  const std::string& what, UnixTime at);

/// Throws SQLiteError unless every page of the file is right.
void requireWholeDatabase(const std::string& path);

/// Another program has the history open. what() is the sentence for the user.
class HistoryInUse : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// While it lives, no other program can open the database, and none has it open. For replacing its file;
/// this process uses it through SQLite neither meanwhile.
class HistoryLease {
public:
    /// Throws: HistoryInUse, std::system_error.
    explicit HistoryLease(const HistoryFiles& files);

private:
    std::optional<ByteLock> lock_;  // nothing where there is no file
};

/// A history that is made beside the one in use, to take its place. What is left of it when it goes is
/// deleted, as is what a process that was killed left of another. Failures: SQLiteError, std::system_error.
class NewHistory {
public:
    /// Makes an empty file.
    explicit NewHistory(const HistoryFiles& files);
    ~NewHistory();
    NewHistory(const NewHistory&) = delete;
    NewHistory& operator=(const NewHistory&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Brings the file to the disk and puts it in the history's place. The old database and its log are kept
    /// under a name of datedCopyPath(), which is given back; nothing that is there is overwritten. At any
    /// moment the old database is under one of the two names, and its log beside it or beside the copy.
    std::filesystem::path replaceHistory(const std::string& what, UnixTime at);

private:
    void deleteAll() const;

    HistoryFiles files_;
    std::string path_;
};

}  // namespace brindle
