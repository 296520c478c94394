#include "analysis/ExplorerState.h"

#include "model/RawText.h"

namespace brindle {
namespace {

constexpr RawTextRow<ExplorerMode> modes[] = {{ExplorerMode::folders, "folders"},
                                              {ExplorerMode::files, "files"}};

constexpr RawTextRow<FileSort> sorts[] = {
    {FileSort::largest, "largest"}, {FileSort::newest, "newest"}, {FileSort::name, "name"}};

}  // namespace

std::string_view rawText(ExplorerMode mode) {
    return rawTextOf<ExplorerMode>(modes, mode);
}
std::string_view rawText(FileSort sort) {
    return rawTextOf<FileSort>(sorts, sort);
}

std::optional<ExplorerMode> explorerModeFrom(std::string_view rawText) {
    return caseOf<ExplorerMode>(modes, rawText);
}
std::optional<FileSort> fileSortFrom(std::string_view rawText) {
    return caseOf<FileSort>(sorts, rawText);
}

}  // namespace brindle
