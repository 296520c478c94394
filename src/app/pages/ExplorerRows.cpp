#include "app/pages/ExplorerRows.h"

#include "analysis/DaySentence.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <QStringList>
#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <iterator>

namespace brindle {
namespace {

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

std::string keyOf(const FolderRef& folder, ChangeSource source) {
    return fmt::format("{}/{}/{}", source == ChangeSource::estimated ? "e" : "m", folder.locationID.rawValue,
                       fmt::join(folder.components, "/"));
}

QString filesText(std::int64_t count) {
    return text(filled(translatedCount("{} file", "{} files", count), groupedNumber(count)));
}

QString actionText(ChangeAction action) {
    switch (action) {
        case ChangeAction::added:
            return translated("Added");
        case ChangeAction::grew:
            return translated("Grew");
        case ChangeAction::shrank:
            return translated("Shrank");
        case ChangeAction::removed:
            break;
    }
    return translated("Removed");
}

/// `name`: as it is shown; empty for the folder itself.
std::string pathText(const std::string& location, const FolderPath& folder, const std::string& name) {
    std::string path = location;
    for (const std::string& component : folder) path += "/" + fileNameText(component);
    return name.empty() ? path : path + "/" + name;
}

/// Both are magnitudes. A row without any amount says that it is 0.
void setAmounts(ExplorerRow& row, const std::string& path, std::int64_t added, std::int64_t freed) {
    std::vector<std::string> exact;
    if (added > 0 || freed == 0) {
        row.added = text(signedByteAmount(added));
        exact.push_back(filled(translated("{} added"), exactByteAmount(added)));
    }
    if (freed > 0) {
        row.freed = text(signedByteAmount(-freed));
        exact.push_back(filled(translated("{} freed"), exactByteAmount(freed)));
    }
    row.hint = text(fmt::format("{}\n{}", path, fmt::join(exact, ", ")));
}

QString join(const QString& a, const QString& b) {
    return a.isEmpty() || b.isEmpty() ? a + b : a + QStringLiteral(" · ") + b;
}

QString spokenOf(const ExplorerRow& row) {
    QStringList parts{row.name, row.isFolder ? QString(translated("folder")) : row.verb, row.description,
                      row.added, row.freed};
    if (row.isEstimated) parts.push_back(translated("estimated"));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

}  // namespace

std::unique_ptr<ExplorerList> makeExplorerList() {
    return std::make_unique<ExplorerList>(
        [](const ExplorerRow& row) { return row.key; },
        std::vector<ExplorerList::Role>{
            {"isFolder", [](const ExplorerRow& row) { return row.isFolder; }},
            {"isEstimated", [](const ExplorerRow& row) { return row.isEstimated; }},
            {"name", [](const ExplorerRow& row) { return row.name; }},
            {"description", [](const ExplorerRow& row) { return row.description; }},
            {"verb", [](const ExplorerRow& row) { return row.verb; }},
            {"added", [](const ExplorerRow& row) { return row.added; }},
            {"freed", [](const ExplorerRow& row) { return row.freed; }},
            {"addedShare", [](const ExplorerRow& row) { return row.addedShare; }},
            {"freedShare", [](const ExplorerRow& row) { return row.freedShare; }},
            {"hint", [](const ExplorerRow& row) { return row.hint; }},
            {"spoken", [](const ExplorerRow& row) { return row.spoken; }}});
}

ExplorerRow ExplorerRowMaker::row(const FolderSummary& summary, std::int64_t largestVolume,
                                  ChangeSource source) const {
    const auto& [ref, totals] = summary;
    const std::string location = shownLocationName(locations_, ref.locationID);
    ExplorerRow row{.key = keyOf(ref, source), .folder = ref};
    row.isFolder = true;
    row.isEstimated = source == ChangeSource::estimated;
    row.name = text(ref.components.empty() ? location : fileNameText(*std::prev(ref.components.end())));
    row.description = filesText(totals.count);
    setAmounts(row, pathText(location, ref.components, {}), totals.added, totals.freed);
    row.addedShare = shareOf(totals.added, largestVolume);
    row.freedShare = shareOf(totals.freed, largestVolume);
    if (!row.isEstimated) tellMove(row, moves_.moveOf(ref));
    row.spoken = spokenOf(row);
    return row;
}

ExplorerRow ExplorerRowMaker::row(const FileChange& change) {
    const std::string name = fileNameText(displayName(change));
    ExplorerRow row{
        .key = fmt::format("{}{}", change.source == ChangeSource::estimated ? "e" : "m", change.id),
        .folder = {change.locationID, change.folder}};
    row.isEstimated = change.source == ChangeSource::estimated;
    row.name = text(name);
    const auto move = row.isEstimated ? std::nullopt : moves_.moveOf(change);
    // A row has no room for both places; the hint has them.
    row.description = join(timeText(change), move ? QString() : placeText(change));
    row.verb = actionText(change.action);
    setAmounts(row, pathText(shownLocationName(locations_, change.locationID), change.folder, name),
               std::max<std::int64_t>(change.byteDelta, 0), std::max<std::int64_t>(-change.byteDelta, 0));
    tellMove(row, move);
    row.spoken = spokenOf(row);
    return row;
}

void ExplorerRowMaker::tellMove(ExplorerRow& row, const std::optional<FolderMove>& move) const {
    if (!move) return;
    const QString moved = text(moveText(*move, brindle::placeText(move->other, locations_)));
    row.description = join(row.description, moved);
    row.hint += QStringLiteral("\n") + moved;
}

QString ExplorerRowMaker::timeText(const FileChange& change) {
    if (change.source == ChangeSource::estimated)  // told by the day alone
        return hasDays_ ? text(calendar_.shortLabel(change.day)) : QString();
    const auto found = times_.find(change.observedAt);
    if (found != times_.end()) return found->second;
    const std::string clock = calendar_.clockLabel(change.observedAt);
    return times_[change.observedAt] = text(
               hasDays_ ? filled(translated("{0}, {1}"), calendar_.shortLabel(change.day), clock) : clock);
}

QString ExplorerRowMaker::placeText(const FileChange& change) const {
    std::vector<std::string> parts;
    if (!folder_) parts.push_back(shownLocationName(locations_, change.locationID));
    const std::size_t depth = folder_ ? folder_->components.size() : 0;
    for (std::size_t i = depth; i < change.folder.size(); ++i)
        parts.push_back(fileNameText(change.folder.begin()[static_cast<std::ptrdiff_t>(i)]));
    return text(fmt::format("{}", fmt::join(parts, "/")));
}

std::string shownLocationName(const std::vector<TrackedLocation>& locations, const LocationID& id) {
    const auto found = std::ranges::find(locations, id, &TrackedLocation::id);
    return fileNameText(found == locations.end() ? id.rawValue : found->name);
}

}  // namespace brindle
