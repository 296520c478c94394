#pragma once

#include "model/UnixTime.h"
#include "store/HistoryFiles.h"

#include <filesystem>
#include <string>

namespace brindle {

enum class ExistingFile { keep, replace };

/// Writes a copy of a history, as it was last committed, to `destination`, an absolute path; other programs
/// may write to the history meanwhile. The copy is one file of mode 0600, which has its name only once it is
/// whole and on the disk.
/// Throws: StoreError for what is no history of a version that can be read; SQLiteError, also of damage;
/// std::system_error with EEXIST where something is that may not be replaced, which is anything but a regular
/// file in any case.
void backUpHistory(const HistoryFiles& history, const std::string& destination, ExistingFile existing);

/// Puts a copy of `backup`, which stays, in the place of the history in `directory`, and gives back where the
/// old one is kept; an empty path where there was none. The caller has seen to it that no other program uses
/// the history. Throws as backUpHistory() does; the old history is in its place then.
[[nodiscard]] std::filesystem::path restoreHistory(const HistoryFiles& backup,
                                                   const std::filesystem::path& directory, UnixTime at);

}  // namespace brindle
