#include "analysis/Explorer.h"
#include "export/StatementRows.h"
#include "model/Utf8.h"
#include "scan/FolderScanner.h"
#include "store/HistoryStore.h"
#include "support/FakeTree.h"
#include "support/TempFolder.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace {

using namespace brindle;

void require(bool holds) {
    if (!holds) std::abort();
}

/// The files that the bytes name: a NUL ends a file's path.
std::set<std::string> pathsIn(std::string_view bytes) {
    std::set<std::string> paths;
    std::string path;
    for (const char byte : bytes) {
        if (byte != '\0') {
            path += byte;
            continue;
        }
        const bool isPath = !path.empty() && path.front() != '/' && path.back() != '/' &&
                            path.find("//") == std::string::npos;
        if (isPath) paths.insert(path);
        path.clear();
    }
    // What is a file is no folder.
    std::erase_if(paths, [&](const std::string& file) {
        const auto below = paths.lower_bound(file + "/");
        return below != paths.end() && below->starts_with(file + "/");
    });
    return paths;
}

FakeTree treeOf(const std::set<std::string>& paths) {
    FakeTree tree;
    std::vector<std::string> open;
    std::int64_t size = 1;
    for (const std::string& path : paths) {
        while (!open.empty() && !path.starts_with(open.back() + "/")) {
            tree.endFolder(open.back());
            open.pop_back();
        }
        const auto from = open.empty() ? 0 : open.back().size() + 1;
        for (auto slash = path.find('/', from); slash != std::string::npos;
             slash = path.find('/', slash + 1)) {
            open.push_back(path.substr(0, slash));
            tree.folder(open.back());
        }
        tree.file(path, {.size = size++});
    }
    for (; !open.empty(); open.pop_back()) tree.endFolder(open.back());
    return tree;
}

std::string pathOf(const FileChange& change) {
    std::string path;
    for (const auto& component : change.folder) path += std::string(component) + "/";
    return path + change.name;
}

/// A line of a statement has ten cells, is valid text, and ends where it should.
void requireLine(const std::string& line) {
    int cells = 1;
    bool isQuoted = false;
    for (std::size_t i = 0; i + 2 < line.size(); ++i) {
        if (line[i] == '"') isQuoted = !isQuoted;
        if (isQuoted) continue;
        if (line[i] == ',') ++cells;
        require(line[i] != '\r' && line[i] != '\n');
    }
    require(!isQuoted && cells == 10 && line.ends_with("\r\n") && isUtf8(line));
}

}  // namespace

// Names of any bytes come back from the walk, the store, the explorer and a statement as they were.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<TempFolder> folder;
    static std::unique_ptr<HistoryStore> store;
    static int locations = 0;
    if (locations++ % 300 == 0) {
        store.reset();
        folder = std::make_unique<TempFolder>();
        store = std::make_unique<HistoryStore>(folder->path());
    }
    const LocationID id{std::to_string(locations)};
    store->insert({.id = id, .name = "a", .path = "/a", .scanPath = "/a", .volumeID = "v"}).get();

    const auto paths = pathsIn({reinterpret_cast<const char*>(data), size});
    const Calendar calendar("en_US", "UTC");
    const auto check = [&](const FakeTree& tree) {
        const auto walk = [&](const EntrySink& sink) {
            return FolderScanner(tree).scan(
                "/a", {}, CancellationFlag(), [](const ScanProgress&) {}, sink);
        };
        const LocationRecord record{.id = id};
        return store
            ->commit({.record = record, .walk = walk, .now = [] { return 1e9; }, .calendar = calendar})
            .get();
    };
    check(FakeTree());
    const CheckCommit commit = check(treeOf(paths));
    require(commit.totals.count == std::ssize(paths));

    const LocalDay day = calendar.day(1e9);
    const auto changes = store->changes(day, id).get();
    std::set<std::string> found;
    for (const FileChange& change : changes) found.insert(pathOf(change));
    require(found == paths);

    const auto all = filtered(changes, DirectionFilter::all, TextSearch("", "en_US"));
    require(all.size() == changes.size() && totalsOf(all) == commit.totals);
    require(filesIn(all, {}, FileSort::name, "en_US").size() == all.size());
    require(levelOf(all, {}).totals == commit.totals);
    if (!changes.empty()) {
        const FileChange& any = changes.front();
        const FolderRef inside{id, any.folder};
        static_cast<void>(levelOf(all, inside));
        static_cast<void>(filtered(changes, DirectionFilter::added, TextSearch(any.name, "tr_TR")));
    }

    StatementRows rows({}, false, calendar);
    for (const FileChange& change : changes) {
        std::string line;
        storageStatement::appendLine(rows.row(change), line);
        requireLine(line);
    }
    return 0;
}
