#include "store/Backup.h"

#include "model/RandomUUID.h"
#include "platform/PrivateFiles.h"
#include "store/HistoryExamination.h"
#include "store/Migrations.h"
#include "store/SQLText.h"

#include <fmt/format.h>
#include <system_error>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// Into an empty file.
void copyInto(const HistoryFiles& history, const std::string& empty) {
    SQLiteConnection db(history.database(), quietAccess(history));
    static_cast<void>(requireHistory(db));
    db.execute("VACUUM INTO " + textLiteral(empty));
}

void requireReplaceable(const fs::path& destination, ExistingFile existing) {
    const fs::file_status status = fs::symlink_status(destination);
    if (!fs::exists(status)) return;
    if (existing == ExistingFile::keep || !fs::is_regular_file(status))
        throw std::system_error(EEXIST, std::generic_category(), destination.string());
}

/// A file under a name of its own until it is finished; deleted when it goes before.
class UnfinishedFile {
public:
    explicit UnfinishedFile(const fs::path& destination)
        : path_((destination.parent_path() /
                 fmt::format(".{}.{}.partial", destination.filename().string(), randomUUID()))
                    .string()) {
        createPrivateFile(path_);
    }
    ~UnfinishedFile() {
        std::error_code isGone;
        fs::remove(path_, isGone);
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
};

}  // namespace

void backUpHistory(const HistoryFiles& history, const std::string& destination, ExistingFile existing) {
    requireReplaceable(destination, existing);
    const UnfinishedFile copy(destination);
    copyInto(history, copy.path());
    requireWholeDatabase(copy.path());
    syncToDisk(copy.path());
    if (existing == ExistingFile::keep)
        placeFile(copy.path(), destination);
    else
        replaceFile(copy.path(), destination);
}

fs::path restoreHistory(const HistoryFiles& backup, const fs::path& directory, UnixTime at) {
    NewHistory restored{HistoryFiles(directory)};
    copyInto(backup, restored.path());
    requireWholeDatabase(restored.path());
    return restored.replaceHistory("before-restore", at);
}

}  // namespace brindle
