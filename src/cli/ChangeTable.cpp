#include "cli/ChangeTable.h"

#include "model/NumberText.h"
#include "model/Translation.h"

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

std::vector<Cell> changeRow(const FileChange& change, const LocationNames* roots) {
    std::string path = roots != nullptr ? roots->of(change.locationID) + "/" : "";
    for (const std::string& component : change.folder) path += component + "/";
    path += displayName(change);
    return {amountCell(change.byteDelta), Cell(actionWord(change.action)), pathCell(path)};
}

std::vector<Cell> folderRow(const FolderSummary& folder, const LocationNames& roots) {
    const auto& [ref, totals] = folder;
    return {amountCell(totals.added), amountCell(-totals.freed), pathCell(roots.path(ref))};
}

Table folderTable(std::span<const FolderSummary> folders, const LocationNames& roots) {
    Table table(folderColumns);
    for (const FolderSummary& folder : folders) table.add(folderRow(folder, roots));
    return table;
}

std::string totalsText(const ChangeTotals& totals, const Output& output) {
    return filled(translatedCount("{0} added, {1} freed in {2} file", "{0} added, {1} freed in {2} files",
                                  totals.count),
                  output.added(totals.added), output.freed(totals.freed), groupedNumber(totals.count));
}

}  // namespace brindle
