#include "store/HistoryFiles.h"

#include "model/Translation.h"
#include "platform/PrivateFiles.h"
#include "store/SQLiteConnection.h"
#include "store/SQLiteError.h"

#include <chrono>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sqlite3.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// What SQLite's programs lock among each other in a database file while they have it open.
constexpr ByteRange databaseLocks{.begin = 0x40000000, .size = 512};

std::string logOf(const fs::path& database) {
    return database.string() + "-wal";
}

/// Another name of the same file, where the file system has such; there it is one file until the other name
/// is given to another. Elsewhere a copy.
void giveSecondName(const std::string& file, const std::string& second) {
    std::error_code isUnsupported;
    fs::create_hard_link(file, second, isUnsupported);
    if (!isUnsupported) return;
    if (isUnsupported == std::errc::file_exists || isUnsupported == std::errc::no_such_file_or_directory)
        throw fs::filesystem_error("", file, second, isUnsupported);
    const std::string unfinished = second + ".partial";
    fs::remove(unfinished);
    createPrivateFile(unfinished);
    fs::copy_file(file, unfinished, fs::copy_options::overwrite_existing);
    syncToDisk(unfinished);
    placeFile(unfinished, second);
}

/// The name under which the database was set aside already; nothing when it was not.
std::optional<fs::path> secondNameOf(const HistoryFiles& files) {
    std::error_code none;
    const fs::path database = files.database();
    if (fs::hard_link_count(database, none) < 2 || none) return {};
    for (const auto& entry : fs::directory_iterator(files.directory(), none))
        if (entry.path() != database && fs::equivalent(entry.path(), database, none)) return entry.path();
    return {};
}

}  // namespace

std::string HistoryFiles::logForRecovery() const {
    std::error_code none;
    if (!fs::exists(log(), none))
        if (const auto second = secondNameOf(*this)) return logOf(*second);
    return log();
}

std::optional<int> HistoryFiles::user() const {
    return byteLockHolder(database(), databaseLocks);
}

fs::path datedCopyPath(const fs::path& directory, const std::string& what, UnixTime at) {
    const std::chrono::sys_time<std::chrono::seconds> second{
        std::chrono::seconds(static_cast<std::int64_t>(at))};
    return directory / fmt::format("History-{}-{:%Y-%m-%dT%H-%M-%S}Z.sqlite", what, second);
}

void requireWholeDatabase(const std::string& path) {
    SQLiteConnection db(path);
    auto rows = db.prepare("PRAGMA integrity_check(1)");
    const std::string verdict = rows.step() ? rows.text(0) : "";
    if (verdict != "ok") throw SQLiteError(SQLITE_CORRUPT, verdict);
}

HistoryLease::HistoryLease(const HistoryFiles& files) {
    std::error_code none;
    if (!fs::exists(files.database(), none)) return;
    lock_ = ByteLock::tryToTake(files.database(), databaseLocks);
    if (lock_) return;
    const int user = files.user().value_or(0);
    if (user == 0)
        throw HistoryInUse(
            translated("Another program has this storage history open. Close it and try again."));
    throw HistoryInUse(filled(
        translated("Another program (process {}) has this storage history open. Close it and try again."),
        user));
}

NewHistory::NewHistory(const HistoryFiles& files)
    : files_(files), path_((files.directory() / "History-new.sqlite.partial").string()) {
    deleteAll();
    createPrivateFile(path_);
}

NewHistory::~NewHistory() {
    try {
        deleteAll();
    } catch (const fs::filesystem_error&) {  // NOLINT(bugprone-empty-catch): the next one deletes it
    }
}

void NewHistory::deleteAll() const {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) fs::remove(path_ + suffix);
}

fs::path NewHistory::replaceHistory(const std::string& what, UnixTime at) {
    syncToDisk(path_);
    std::error_code none;
    fs::path kept;
    if (fs::exists(files_.database(), none)) {
        const auto known = secondNameOf(files_);
        kept = known ? *known : datedCopyPath(files_.directory(), what, at);
        for (int number = 2; !known && (fs::exists(kept) || fs::exists(logOf(kept))); ++number)
            kept = datedCopyPath(files_.directory(), fmt::format("{}-{}", what, number), at);
        // The log first: a copy without its log would be taken for a whole one.
        if (fs::exists(files_.log(), none) && !fs::exists(logOf(kept), none))
            giveSecondName(files_.log(), logOf(kept));
        if (!known) giveSecondName(files_.database(), kept.string());
        syncToDisk(kept.string());
        // Gone before the new database has its name: SQLite would take the log for that one's.
        fs::remove(files_.log());
        fs::remove(files_.logIndex());
        syncToDisk(files_.database());
    }
    replaceFile(path_, files_.database());
    return kept;
}

}  // namespace brindle
