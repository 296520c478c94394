#pragma once

#include "model/Change.h"

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// How an explorer lists changes: folder by folder, or every file at and below its folder in one list.
enum class ExplorerMode { folders, files };

/// How a list of files is sorted.
enum class FileSort { largest, newest, name };

/// The texts under which the values are known. An unknown text gives nothing.
[[nodiscard]] std::string_view rawText(ExplorerMode mode);
[[nodiscard]] std::string_view rawText(FileSort sort);
[[nodiscard]] std::optional<ExplorerMode> explorerModeFrom(std::string_view rawText);
[[nodiscard]] std::optional<FileSort> fileSortFrom(std::string_view rawText);

/// What an explorer shows of a list of changes.
struct ExplorerState {
    ExplorerMode mode = ExplorerMode::folders;
    std::optional<FolderRef> folder;  // absent: the top, above the locations
    DirectionFilter direction = DirectionFilter::all;
    std::string search;  // as typed
    FileSort sort = FileSort::largest;
    int page = 0;  // of the list of files; the first is 0

    bool operator==(const ExplorerState&) const = default;
};

}  // namespace brindle
