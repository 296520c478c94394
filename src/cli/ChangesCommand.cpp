#include "cli/ChangesCommand.h"

#include "analysis/Explorer.h"
#include "analysis/Moves.h"
#include "cli/CSVRows.h"
#include "cli/ChangeTable.h"
#include "cli/LocationNames.h"
#include "cli/PlaceWord.h"
#include "cli/ValueCoding.h"
#include "export/StatementRows.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "model/UserLocale.h"

#include <algorithm>
#include <map>

namespace brindle {
namespace {

constexpr std::size_t rowsForAPerson = 20;

/// The rows that the options leave, in their order: folders before files.
struct Listing {
    Period period;
    std::vector<FolderSummary> folders;
    ChosenChanges files;
    // Of everything that passes, on the page or not.
    ChangeTotals totals;
    std::map<LocalDay, ChangeTotals> days;

    [[nodiscard]] std::size_t rows() const { return folders.size() + files.size(); }
};

DirectionFilter directionOf(const ChangesOptions& options) {
    if (options.isAdded && options.isFreed) throw UsageError(translated("Give one of --added and --freed."));
    if (options.isAdded) return DirectionFilter::added;
    return options.isFreed ? DirectionFilter::freed : DirectionFilter::all;
}

FileSort sortOf(const ChangesOptions& options) {
    if (options.isByFolder && !options.sort.empty())
        throw UsageError(translated("--sort sorts files; folders are listed largest first."));
    return fileSortFrom(options.sort).value_or(FileSort::largest);
}

Listing listingOf(const ChosenChanges& passing, const Period& period, const std::optional<FolderRef>& folder,
                  const ChangesOptions& options) {
    Listing listing{
        .period = period, .folders = {}, .files = filesIn(passing, folder, sortOf(options), userLocale())};
    for (const FileChange* change : listing.files) {
        listing.totals.add(*change);
        listing.days[change->day].add(*change);
    }
    if (options.isByFolder) {
        ExplorerLevel level = levelOf(listing.files, folder);
        listing.folders = std::move(level.folders);
        listing.files = std::move(level.files);
    }
    return listing;
}

/// A part of the rows, and where it stands among all of them.
struct Page {
    std::size_t first = 0;
    std::size_t size = 0;

    [[nodiscard]] std::size_t end() const { return first + size; }
};

Page pageOf(std::size_t rows, std::size_t limit, std::size_t number) {
    if (limit == 0) limit = std::max<std::size_t>(rows, 1);
    const std::size_t pages = std::max<std::size_t>((rows + limit - 1) / limit, 1);
    if (number == 0 || number > pages)
        throw UsageError(filled(translatedCount("There is only {} page.", "There are only {} pages.",
                                                static_cast<std::int64_t>(pages)),
                                groupedNumber(static_cast<std::int64_t>(pages))));
    const std::size_t first = (number - 1) * limit;
    return {.first = first, .size = std::min(limit, rows - first)};
}

void cutTo(const Page& page, Listing& listing) {
    const auto cut = [](auto& rows, std::size_t first, std::size_t end) {
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(end), rows.end());
        rows.erase(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(first));
    };
    const std::size_t folders = listing.folders.size();
    const auto ofFiles = [folders](std::size_t row) { return row - std::min(row, folders); };
    cut(listing.files, ofFiles(page.first), ofFiles(page.end()));
    cut(listing.folders, std::min(page.first, folders), std::min(page.end(), folders));
}

/// Below a row, in its last column, where what it tells of likely went or came from.
void addMove(Table& table, const std::optional<FolderMove>& move, std::size_t columns,
             const LocationNames& names) {
    if (!move) return;
    std::vector<Cell> cells(columns);
    cells.back() = Cell(moveText(*move, fileNameText(names.path(move->other))), TextStyle::faint);
    table.add(std::move(cells));
}

Table folderedTable(const Listing& listing, const LocationNames& names, const Moves& moves) {
    Table table(folderColumns);
    for (const FolderSummary& folder : listing.folders) {
        table.add(folderRow(folder, names));
        addMove(table, moves.moveOf(folder.ref), folderColumns.size(), names);
    }
    for (const FileChange* change : listing.files) {
        auto row = changeRow(*change, &names);
        const bool isAdded = change->byteDelta > 0;
        table.add({isAdded ? row[0] : Cell(), isAdded ? Cell() : row[0], row[2]});
        addMove(table, moves.moveOf(*change), folderColumns.size(), names);
    }
    return table;
}

Table fileTable(const Listing& listing, const LocationNames& names, const Moves& moves) {
    std::vector<ColumnKind> columns(changeColumns.begin(), changeColumns.end());
    const bool hasDays = listing.period.first != listing.period.last;
    if (hasDays) columns.insert(columns.begin(), ColumnKind::word);
    Table table(columns);
    for (const FileChange* change : listing.files) {
        auto row = changeRow(*change, &names);
        if (hasDays) row.insert(row.begin(), Cell(change->day.text(), TextStyle::faint));
        table.add(std::move(row));
        addMove(table, moves.moveOf(*change), columns.size(), names);
    }
    return table;
}

void print(const Context& context, const Listing& listing, const Page& page, std::size_t rows,
           const LocationNames& names, const Moves& moves, const ChangesOptions& options) {
    Output& output = context.output;
    const std::string label = output.emphasized(periodLabel(listing.period, context.calendar));
    const std::string totals = totalsText(listing.totals, output);
    if (listing.period.first == listing.period.last) {
        output.line(label + ": " + totals);
    } else {  // both on one line are wider than a usual terminal
        output.line(label);
        output.line(totals);
    }
    (options.isByFolder ? folderedTable(listing, names, moves) : fileTable(listing, names, moves))
        .print(output);
    if (const auto more = static_cast<std::int64_t>(rows - page.end()); more > 0)
        output.line(
            filled(translatedCount("  … and {0} more; --page {1} lists the next, --limit 0 all",
                                   "  … and {0} more; --page {1} lists the next, --limit 0 all", more),
                   groupedNumber(more), options.page + 1));
}

void printCSV(const Context& context, const Listing& listing, const HistorySnapshot& snapshot,
              const LocationNames& names, bool isByFolder) {
    if (isByFolder) {
        printRow(context.output, {"Kind", "Path", "Added in bytes", "Freed in bytes", "Files"});
        for (const auto& [ref, totals] : listing.folders)
            printRow(context.output, {"Folder", names.path(ref), totals.added, totals.freed, totals.count});
        for (const FileChange* change : listing.files) {
            ChangeTotals totals;
            totals.add(*change);
            printRow(context.output, {"File", names.path(*change), totals.added, totals.freed, totals.count});
        }
        return;
    }
    context.output.text(storageStatement::headerLine());
    StatementRows rows(snapshot.locations, snapshot.isExample, context.calendar);
    std::string line;
    for (const FileChange* change : listing.files) {
        line.clear();
        storageStatement::appendLine(rows.row(*change), line);
        context.output.text(line);
    }
}

/// With where it likely went or came from; of a file, which change is its other half.
template <class Row>
nlohmann::ordered_json coded(const Row& row, const std::optional<FolderMove>& move,
                             const FileChange* counterpart = nullptr) {
    nlohmann::ordered_json json = row;
    if (move) {
        auto& other = json[move->hasLeft ? "likelyMovedTo" : "likelyMovedFrom"];
        other = move->other;
        if (counterpart != nullptr) other["change"] = counterpart->id;
    }
    return json;
}

nlohmann::ordered_json coded(const Listing& listing, const Moves& moves, bool isByFolder) {
    auto days = nlohmann::ordered_json::array();
    for (const auto& [day, totals] : listing.days) days.push_back({{"day", day}, {"totals", totals}});
    nlohmann::ordered_json json = {{"first", listing.period.first},
                                   {"last", listing.period.last},
                                   {"totals", listing.totals},
                                   {"days", days}};
    if (isByFolder) {
        auto& folders = json["folders"] = nlohmann::ordered_json::array();
        for (const FolderSummary& folder : listing.folders)
            folders.push_back(coded(folder, moves.moveOf(folder.ref)));
    }
    auto& changes = json["changes"] = nlohmann::ordered_json::array();
    for (const FileChange* change : listing.files)
        changes.push_back(coded(*change, moves.moveOf(*change), moves.counterpart(*change)));
    return json;
}

}  // namespace

ExitCode runChanges(const Context& context, const ChangesOptions& options) {
    refuseTwoForms(context, options.asCSV);
    const auto source = context.openSource();
    const HistorySnapshot snapshot = source->snapshot().get();
    const Period period = periodOf(options.period, context.calendar, snapshot.today);
    const auto folder = folderNamed(options.folder, snapshot);
    const LocationScope scope{folder ? std::optional(folder->locationID) : std::nullopt};

    const auto changes = source->periodChanges(period.first, period.last, scope).get();
    const auto passing = filtered(changes, directionOf(options), TextSearch(options.search, userLocale()));
    Listing listing = listingOf(passing, period, folder, options);
    const std::size_t rows = listing.rows();
    const bool isForAPerson = !context.asJson && !options.asCSV;
    const Page page = pageOf(rows, options.limit.value_or(isForAPerson ? rowsForAPerson : 0), options.page);
    cutTo(page, listing);

    const LocationNames names(snapshot.locations);
    const Moves moves = options.asCSV ? Moves() : Moves(changes);
    if (options.asCSV)
        printCSV(context, listing, snapshot, names, options.isByFolder);
    else if (context.asJson)
        context.output.json(coded(listing, moves, options.isByFolder));
    else if (rows == 0)
        context.output.sentence(changes.empty() ? translated("No changes are recorded.")
                                                : translated("No changes match."));
    else
        print(context, listing, page, rows, names, moves, options);
    return rows == 0 ? ExitCode::nothingFound : ExitCode::success;
}

}  // namespace brindle
