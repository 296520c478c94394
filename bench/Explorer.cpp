// brindle_explorer CHANGES ROUNDS: what the explorer works out of a list of so many changes, against one
// plain pass over the same list that sums its deltas folder by folder. Prints a line for each: its name, the
// median of its processor time in seconds, and the ratio to the plain pass.

#include "analysis/ExplorerCache.h"
#include "analysis/Moves.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fmt/format.h>
#include <functional>
#include <random>
#include <stdexcept>
#include <unordered_map>

namespace brindle {
namespace {

constexpr int filesOfFolder = 12;  // on the average
constexpr UnixTime noon = 1'772'884'800;

class ListMaker {
public:
    /// As a source of history gives a day: a check's changes of one folder stand together and share its path.
    std::vector<FileChange> make(int count) {
        std::vector<FileChange> changes;
        while (std::ssize(changes) < count) {
            const LocationID location{fmt::format("00000000-0000-4000-8000-{:012}", below(3))};
            const FolderPath folder = path();
            const int files = 1 + below(2 * filesOfFolder - 1);
            for (int i = 0; i < files && std::ssize(changes) < count; ++i) {
                FileChange& change = changes.emplace_back();
                change.id = std::ssize(changes);
                change.locationID = location;
                change.folder = folder;
                change.name = name();
                change.byteDelta = (below(1000) + 1) * 4096LL * (below(3) == 0 ? -1 : 1);
                change.observedAt = noon + below(8) * 3600;
            }
        }
        return changes;
    }

private:
    int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }

    FolderPath path() {
        static constexpr const char* tops[] = {"Documents", "Pictures", "src", "Library", "Bücher"};
        return {tops[below(5)], fmt::format("Projects of {}", 2000 + below(25)),
                fmt::format("group {:02}", below(40)), fmt::format("folder {:04}", below(2000)),
                fmt::format("part {}", below(8))};
    }

    std::string name() {
        switch (below(10)) {
            case 0:
                return "index.js";
            case 1:
                return "package.json";
            case 2:
            case 3:
            case 4:
                return fmt::format("IMG_{:04}.HEIC", below(10'000));
            case 5:
                return fmt::format("{:016x}.cache", random_());
            case 6:
                return fmt::format("Übersicht für Müller {}.pdf", below(100'000));
            default:
                return fmt::format("Report of group {} for the year {}.txt", below(10'000), 2000 + below(25));
        }
    }

    std::mt19937_64 random_{1};
};

/// A folder as the plain pass sees it: nothing is copied to look it up.
struct FolderOf {
    const FileChange* change;

    bool operator==(const FolderOf& other) const {
        return change->locationID == other.change->locationID && change->folder == other.change->folder;
    }
};

struct FolderHash {
    std::size_t operator()(const FolderOf& folder) const {
        std::size_t seed = std::hash<LocationID>{}(folder.change->locationID);
        for (const std::string& component : folder.change->folder)
            seed = seed * 31 + std::hash<std::string>{}(component);
        return seed;
    }
};

std::size_t plainPass(const std::vector<FileChange>& changes) {
    std::unordered_map<FolderOf, std::int64_t, FolderHash> sums;
    for (const FileChange& change : changes) sums[{&change}] += change.byteDelta;
    return sums.size();
}

/// The list as one check of each location finds it: what is less is gone.
std::vector<FileChange> withActions(std::vector<FileChange> changes) {
    for (FileChange& change : changes) {
        change.observedAt = noon;
        if (change.byteDelta < 0) change.action = ChangeAction::removed;
    }
    return changes;
}

/// As many changes, half of which are files of every second folder that are gone, and half the same found
/// again elsewhere; the other folders are as they were.
std::vector<FileChange> withMoves(const std::vector<FileChange>& changes) {
    std::vector<FileChange> moved;
    FolderPath from;
    FolderPath to;
    bool moves = false;
    for (const FileChange& change : changes) {
        if (from.identity() != change.folder.identity()) {
            from = change.folder;
            std::vector<std::string> components(from.begin(), from.end());
            components.front() = "Archive";
            to = components;
            moves = !moves;
        }
        FileChange one = change;
        if (moves) {
            one.observedAt = noon;
            one.byteDelta = std::abs(change.byteDelta);
            one.folder = to;
            moved.push_back(one);
            one.action = ChangeAction::removed;
            one.byteDelta = -one.byteDelta;
            one.folder = from;
        }
        moved.push_back(one);
        if (moved.size() >= changes.size()) break;
    }
    return moved;
}

std::size_t copyingPass(const std::vector<FileChange>& changes) {
    std::unordered_map<FolderRef, std::int64_t> sums;
    for (const FileChange& change : changes) sums[{change.locationID, change.folder}] += change.byteDelta;
    return sums.size();
}

/// What was worked out is given back afterwards, as by a page that has shown it.
double secondsOf(const std::function<std::size_t()>& work, std::size_t& result) {
    const std::clock_t begin = std::clock();
    result = work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

double median(std::vector<double> seconds) {
    const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
    std::ranges::nth_element(seconds, middle);
    return *middle;
}

struct Measured {
    const char* name;
    std::function<std::size_t()> work;  // gives how many changes or folders came out
    std::vector<double> seconds = {};
    std::size_t result = 0;
};

void measure(const std::vector<FileChange>& changes, int rounds) {
    const std::string locale = "en_US";
    const FolderRef root{changes.front().locationID, {}};
    const FolderRef deep{changes.front().locationID, changes.front().folder.first(2)};
    const auto filterOf = [&](DirectionFilter direction, const char* search) {
        return filtered(changes, direction, TextSearch(search, locale));
    };
    const auto levelAt = [&](const std::optional<FolderRef>& folder, DirectionFilter direction) {
        const auto level = levelOf(filterOf(direction, ""), folder);
        return level.folders.size() + level.files.size();
    };
    const auto sortedBy = [&](FileSort sort) {
        return filesIn(filterOf(DirectionFilter::all, ""), {}, sort, locale).size();
    };
    const std::vector<FileChange> moving = withMoves(changes);
    const std::vector<FileChange> staying = withActions(changes);
    ExplorerCache cache(locale);
    const ExplorerState drawn{.folder = root};
    std::vector<Measured> all{
        {"plain pass", [&] { return plainPass(changes); }},
        {"plain pass, copying", [&] { return copyingPass(changes); }},
        {"filter + level, top", [&] { return levelAt({}, DirectionFilter::all); }},
        {"filter + level, location", [&] { return levelAt(root, DirectionFilter::all); }},
        {"filter + level, added", [&] { return levelAt(root, DirectionFilter::added); }},
        {"filter + level, deep", [&] { return levelAt(deep, DirectionFilter::all); }},
        {"search, a third", [&] { return filterOf(DirectionFilter::all, "img").size(); }},
        {"search, nothing", [&] { return filterOf(DirectionFilter::all, "nowhere").size(); }},
        {"search, accent", [&] { return filterOf(DirectionFilter::all, "müller").size(); }},
        {"sort, largest", [&] { return sortedBy(FileSort::largest); }},
        {"sort, newest", [&] { return sortedBy(FileSort::newest); }},
        {"sort, name", [&] { return sortedBy(FileSort::name); }},
        {"moves, next to none", [&] { return static_cast<std::size_t>(Moves(staying).totals().files); }},
        {"moves, most of it", [&] { return static_cast<std::size_t>(Moves(moving).totals().files); }},
        {"cached redraw", [&] { return cache.output(changes, 1, drawn).level.folders.size(); }},
    };
    for (int round = -1; round < rounds; ++round)
        for (Measured& one : all) {
            const double seconds = secondsOf(one.work, one.result);
            if (round >= 0) one.seconds.push_back(seconds);  // the one before only warms up
        }
    const double unit = median(all.front().seconds);
    for (const Measured& one : all)
        fmt::print("{:28} {:9.4f} {:7.2f} {:9}\n", one.name, median(one.seconds), median(one.seconds) / unit,
                   one.result);
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
    using namespace brindle;
    if (argc != 3) {
        fmt::print(stderr, "usage: brindle_explorer CHANGES ROUNDS\n");
        return 2;
    }
    measure(ListMaker().make(std::atoi(argv[1])), std::atoi(argv[2]));
    return 0;
}
