#include "cli/GrewCommand.h"

#include "analysis/GrowthTree.h"
#include "cli/CSVRows.h"
#include "cli/LocationNames.h"
#include "cli/PlaceWord.h"
#include "cli/SizeWord.h"
#include "cli/Table.h"
#include "cli/ValueCoding.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Terminal.h"

#include <algorithm>

namespace brindle {
namespace {

/// The lines that lead to a folder from the one that holds it.
struct Branches {
    const char* middle;
    const char* last;
    const char* through;
    const char* blank = "   ";
};

constexpr Branches lines{.middle = "├─ ", .last = "└─ ", .through = "│  "};
constexpr Branches asciiLines{.middle = "|- ", .last = "`- ", .through = "|  "};

class TreeTable {
public:
    explicit TreeTable(const LocationNames& names)
        : names_(names), branches_(writesUTF8() ? lines : asciiLines) {}

    [[nodiscard]] Table of(const std::vector<GrownFolder>& roots) {
        for (const GrownFolder& root : roots) {
            table_.add({amountCell(root.net), pathCell(names_.path(root.ref))});
            addBelow(root, "");
        }
        return table_;
    }

private:
    void addBelow(const GrownFolder& parent, const std::string& indent) {
        const bool hasRest = parent.smallerFolders > 0 && !parent.folders.empty();
        for (const GrownFolder& folder : parent.folders) {
            const bool isLast = &folder == &parent.folders.back() && !hasRest;
            table_.add({amountCell(folder.net),
                        {{{indent + (isLast ? branches_.last : branches_.middle)},
                          {fileNameText(pathBelow(folder.ref, parent.ref))}}}});
            addBelow(folder, indent + (isLast ? branches_.blank : branches_.through));
        }
        if (hasRest)
            table_.add({amountCell(parent.smallerBytes),
                        {{{indent + branches_.last}, {restText(parent.smallerFolders), TextStyle::faint}}}});
    }

    [[nodiscard]] static std::string pathBelow(const FolderRef& folder, const FolderRef& parent) {
        std::string path;
        const auto begin = folder.components.begin() + static_cast<std::ptrdiff_t>(parent.components.size());
        for (auto component = begin; component != folder.components.end(); ++component)
            path += (path.empty() ? "" : "/") + *component;
        return path;
    }

    [[nodiscard]] static std::string restText(std::int64_t count) {
        return filled(translatedCount("{} smaller folder", "{} smaller folders", count),
                      groupedNumber(count));
    }

    const LocationNames& names_;
    const Branches& branches_;
    Table table_{ColumnKind::figure, ColumnKind::path};
};

nlohmann::ordered_json coded(const std::vector<GrownFolder>& folders) {
    auto listed = nlohmann::ordered_json::array();
    for (const GrownFolder& folder : folders) {
        std::string path;
        for (const std::string& component : folder.ref.components)
            path += (path.empty() ? "" : "/") + component;
        listed.push_back({{"location", folder.ref.locationID},
                          {"folder", path},
                          {"net", folder.net},
                          {"smallerFolders", folder.smallerFolders},
                          {"smallerBytes", folder.smallerBytes},
                          {"folders", coded(folder.folders)}});
    }
    return listed;
}

void printRows(Output& output, const std::vector<GrownFolder>& folders, const LocationNames& names) {
    for (const GrownFolder& folder : folders) {
        printRow(output, {names.path(folder.ref), folder.net});
        printRows(output, folder.folders, names);
    }
}

/// Why there is no tree.
std::string nothingText(const Period& period, const std::optional<std::int64_t>& over,
                        const HistorySnapshot& snapshot, const Calendar& calendar) {
    const bool isChecked = std::ranges::any_of(snapshot.checkedDays, [&](const auto& entry) {
        return std::ranges::any_of(
            entry.second, [&](const LocalDay& day) { return period.first <= day && day <= period.last; });
    });
    const std::string days = periodLabel(period, calendar);
    if (!isChecked) return filled(translated("No check covers {}."), days);
    if (!over) return filled(translated("Nothing grew: {}."), days);
    return filled(translated("Nothing grew by more than {0}: {1}."), byteAmount(*over), days);
}

}  // namespace

ExitCode runGrew(const Context& context, const GrewOptions& options) {
    refuseTwoForms(context, options.asCSV);
    const auto over = options.over.empty() ? std::nullopt : std::optional(sizeNamed(options.over));
    const auto source = context.openSource();
    const HistorySnapshot snapshot = source->snapshot().get();
    const Period period = periodOf(options.period, context.calendar, snapshot.today);
    const auto folder = folderNamed(options.folder, snapshot);
    const LocationScope scope{folder ? std::optional(folder->locationID) : std::nullopt};

    auto changes = source->periodChanges(period.first, period.last, scope).get();
    if (folder) std::erase_if(changes, [&](const FileChange& change) { return !liesIn(change, *folder); });
    const auto tree = growthTree(changes, over);

    const LocationNames names(snapshot.locations);
    if (options.asCSV) {
        printRow(context.output, {"Folder", "Growth in bytes"});
        printRows(context.output, tree, names);
    } else if (context.asJson) {
        context.output.json({{"first", period.first},
                             {"last", period.last},
                             {"over", over ? nlohmann::ordered_json(*over) : nlohmann::ordered_json()},
                             {"folders", coded(tree)}});
    } else if (tree.empty()) {
        context.output.sentence(nothingText(period, over, snapshot, context.calendar));
    } else {
        context.output.line(context.output.emphasized(periodLabel(period, context.calendar)));
        context.output.line(over ? filled(translated("What grew by more than {}:"), byteAmount(*over))
                                 : translated("What grew:"));
        TreeTable(names).of(tree).print(context.output);
    }
    return over && !tree.empty() ? ExitCode::limitPassed : ExitCode::success;
}

}  // namespace brindle
