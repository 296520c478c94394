#include "cli/ChangeLine.h"

#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <fmt/format.h>

namespace brindle {
namespace {

const char* actionWord(ChangeAction action) {
    switch (action) {
        case ChangeAction::added:
            return translated("added");
        case ChangeAction::grew:
            return translated("grew");
        case ChangeAction::shrank:
            return translated("shrank");
        case ChangeAction::removed:
            break;
    }
    return translated("removed");
}

}  // namespace

std::string changeLine(const FileChange& change, const Output& output, const std::string* root) {
    std::string path = root != nullptr ? *root + "/" : std::string();
    for (const std::string& component : change.folder) path += component + "/";
    path += displayName(change);
    return fmt::format("  {}  {:8} {}", output.amountColumn(change.byteDelta), actionWord(change.action),
                       fileNameText(path));
}

std::string totalsText(const ChangeTotals& totals, const Output& output) {
    return fmt::format(fmt::runtime(translatedCount("{0} added, {1} freed in {2} file",
                                                    "{0} added, {1} freed in {2} files", totals.count)),
                       output.added(totals.added), output.freed(totals.freed), groupedNumber(totals.count));
}

}  // namespace brindle
