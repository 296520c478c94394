#include "analysis/MovePairs.h"

#include "analysis/CheckedFolders.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace brindle {
namespace {

using Index = std::uint32_t;

/// What a believable way is made of: files that are many enough, or large enough together.
constexpr std::int64_t leastFiles = 3;
constexpr std::int64_t leastBytes = 10'000;

/// Of more files that are alike, only their place below a folder that moved tells which is which.
constexpr std::size_t mostAlike = 16;

/// A folder whose files went more ways than this tells nothing of its other files.
constexpr std::size_t mostWays = 8;

/// A file that was removed or added.
struct Half {
    std::uint64_t likeness = 0;  // the same for the same name and size in one run
    Index folder = 0;
    Index change = 0;

    auto operator<=>(const Half&) const = default;
};

/// All that is alike; both sides ordered by folder.
struct Alike {
    std::span<const Half> gone;
    std::span<const Half> come;

    [[nodiscard]] bool isSole() const { return gone.size() == 1 && come.size() == 1; }
    [[nodiscard]] bool isBalanced() const { return gone.size() == come.size() && gone.size() <= mostAlike; }
};

/// What went from one folder to another.
struct Weight {
    std::int64_t files = 0;
    std::int64_t bytes = 0;

    void add(std::int64_t size) {
        ++files;
        bytes += size;
    }
    [[nodiscard]] bool isBelievable() const { return files >= leastFiles || bytes >= leastBytes; }
};

/// Two folders below which files have the same path before and after.
struct Way {
    CheckedFolder from;
    CheckedFolder to;

    bool operator==(const Way&) const = default;
};

struct WayHash {
    std::size_t operator()(const Way& way) const {
        return std::hash<CheckedFolder>{}(way.from) * 31 + std::hash<CheckedFolder>{}(way.to);
    }
};

/// The folders where something was and where it is.
using FolderPair = std::pair<Index, Index>;

struct FolderPairHash {
    std::size_t operator()(const FolderPair& folders) const {
        return (std::uint64_t{folders.first} << 32 | folders.second) * 0x9E3779B97F4A7C15ULL;
    }
};

class Pairing {
public:
    explicit Pairing(std::span<const FileChange> changes) : changes_(changes), checks_(changes) {
        for (Index i = 0; i < changes.size(); ++i)
            if (isGone(changes[i]))
                gone_.push_back({.likeness = likenessOf(i), .change = i});
            else if (hasCome(changes[i]))
                come_.push_back({.likeness = likenessOf(i), .change = i});
    }

    std::vector<std::size_t> pairs() {
        dropUnlike(come_, gone_);
        dropUnlike(gone_, come_);
        if (gone_.empty() || come_.empty()) return {};
        numberFolders();
        findAlike();
        others_.assign(changes_.size(), noPair);
        pairSole();
        pairFolders();
        pairPlaces();
        return hasPairs_ ? std::move(others_) : std::vector<std::size_t>();
    }

private:
    static bool isFile(const FileChange& change) {
        return change.source == ChangeSource::measured && change.fileCount == 1;
    }
    static bool isGone(const FileChange& change) {
        return change.action == ChangeAction::removed && change.byteDelta < 0 && isFile(change);
    }
    static bool hasCome(const FileChange& change) {
        return change.action == ChangeAction::added && change.byteDelta > 0 && isFile(change);
    }

    [[nodiscard]] const FileChange& changeOf(const Half& half) const { return changes_[half.change]; }
    [[nodiscard]] std::int64_t sizeOf(const Half& half) const { return std::abs(changeOf(half).byteDelta); }

    [[nodiscard]] std::uint64_t likenessOf(Index change) const {
        const FileChange& file = changes_[change];
        std::uint64_t likeness = std::hash<std::string_view>{}(file.name);
        for (const auto part : {static_cast<std::uint64_t>(std::abs(file.byteDelta)),
                                std::uint64_t{checks_.runOf(checks_.of(change))}})
            likeness = (likeness ^ part) * 0x9E3779B97F4A7C15ULL;
        return likeness;
    }

    [[nodiscard]] bool areAlike(const Half& a, const Half& b) const {
        return sizeOf(a) == sizeOf(b) && changeOf(a).name == changeOf(b).name &&
               checks_.runOf(checks_.of(a.change)) == checks_.runOf(checks_.of(b.change));
    }

    /// Leaves those of which there may be some alike among the others, and few more: on most days next to
    /// nothing moves, and what follows takes longer.
    static void dropUnlike(std::vector<Half>& halves, const std::vector<Half>& others) {
        constexpr int bits = 23;
        const auto placeOf = [](const Half& half) { return half.likeness >> (64 - bits); };
        std::vector<bool> known(std::size_t{1} << bits);
        for (const Half& other : others) known[placeOf(other)] = true;
        std::erase_if(halves, [&](const Half& half) { return !known[placeOf(half)]; });
    }

    void numberFolders() {
        for (std::vector<Half>* halves : {&gone_, &come_})
            for (Half& half : *halves)
                half.folder = folders_.numberOf(checks_.of(half.change), changeOf(half).folder);
        goneFrom_.resize(folders_.size());
        comeTo_.resize(folders_.size());
        for (Index i = 0; i < changes_.size(); ++i) {
            if (!isGone(changes_[i]) && !hasCome(changes_[i])) continue;
            if (const auto folder = folders_.find(checks_.of(i), changes_[i].folder))
                ++(isGone(changes_[i]) ? goneFrom_ : comeTo_)[*folder];
        }
    }

    void findAlike() {
        std::ranges::sort(gone_);
        std::ranges::sort(come_);
        const auto end = [](std::vector<Half>::iterator begin, std::vector<Half>::iterator last) {
            return std::find_if(begin, last,
                                [begin](const Half& half) { return half.likeness != begin->likeness; });
        };
        for (auto gone = gone_.begin(), come = come_.begin(); gone != gone_.end() && come != come_.end();) {
            if (gone->likeness < come->likeness) {
                ++gone;
            } else if (come->likeness < gone->likeness) {
                ++come;
            } else {
                const Alike alike{{gone, end(gone, gone_.end())}, {come, end(come, come_.end())}};
                // Different files with one likeness by chance: in doubt.
                const auto isAlike = [&](const Half& half) { return areAlike(half, *alike.gone.begin()); };
                if (std::ranges::all_of(alike.gone, isAlike) && std::ranges::all_of(alike.come, isAlike))
                    alike_.push_back(alike);
                gone += std::ssize(alike.gone);
                come += std::ssize(alike.come);
            }
        }
    }

    void pair(const Half& gone, const Half& come) {
        others_[gone.change] = come.change;
        others_[come.change] = gone.change;
        ways_[wayBetween(gone.folder, come.folder)].paired.add(sizeOf(gone));
        hasPairs_ = true;
    }
    [[nodiscard]] bool isPaired(const Half& half) const { return others_[half.change] != noPair; }

    void pairSole() {
        std::vector<std::pair<const Alike*, Index>> sole;  // with their ways
        for (const Alike& alike : alike_)
            if (alike.isSole())
                sole.emplace_back(&alike, wayBetween(alike.gone[0].folder, alike.come[0].folder));
        std::vector<std::int64_t> files(ways_.size());
        for (const auto& [alike, way] : sole) ++files[way];
        for (const auto& [alike, way] : sole)
            if (sizeOf(alike->gone[0]) >= leastBytes || files[way] >= leastFiles)
                pair(alike->gone[0], alike->come[0]);
    }

    /// The one that fits a folder best.
    struct Best {
        std::tuple<double, std::size_t>
            fit;  // the share of their files that both have; how alike their paths end
        Index folder = 0;
        bool isSole = false;  // no other fits as well

        void consider(const std::tuple<double, std::size_t>& other, Index candidate) {
            if (other > fit)
                *this = {.fit = other, .folder = candidate, .isSole = true};
            else if (other == fit)
                isSole = false;
        }
    };

    void pairFolders() {
        std::unordered_map<FolderPair, Weight, FolderPairHash> shared;
        for (const Alike& alike : alike_)
            if (alike.isBalanced())
                for (const Half& gone : alike.gone)
                    for (const Half& come : alike.come) shared[{gone.folder, come.folder}].add(sizeOf(gone));

        std::unordered_map<Index, Best> goals;
        std::unordered_map<Index, Best> origins;
        for (const auto& [folders, weight] : shared) {
            const auto& [from, to] = folders;
            const std::int64_t all = goneFrom_[from] + comeTo_[to] - weight.files;
            const double share = static_cast<double>(weight.files) / static_cast<double>(all);
            constexpr double leastShare = 0.5;
            if (share < leastShare || !weight.isBelievable()) continue;
            const std::tuple fit(share, sharedEnd(folders_.at(from).path, folders_.at(to).path));
            goals[from].consider(fit, to);
            origins[to].consider(fit, from);
        }
        for (const Alike& alike : alike_) {
            if (alike.isSole() || !alike.isBalanced()) continue;
            for (const Half& gone : alike.gone) {
                const auto goal = goals.find(gone.folder);
                if (goal == goals.end() || !goal->second.isSole) continue;
                const Best& origin = origins[goal->second.folder];
                if (!origin.isSole || origin.folder != gone.folder) continue;
                const auto come = std::ranges::find(alike.come, goal->second.folder, &Half::folder);
                if (come != alike.come.end()) pair(gone, *come);
            }
        }
    }

    void pairPlaces() {
        std::unordered_map<CheckedFolder, std::vector<CheckedFolder>> waysFrom;
        for (const WeighedWay& way : ways_)
            if (way.paired.isBelievable()) waysFrom[way.way.from].push_back(way.way.to);
        if (waysFrom.empty()) return;

        std::unordered_map<Index, std::vector<Index>> goals;
        const auto goalsOf = [&](Index folder) -> const std::vector<Index>& {
            const auto [found, isNew] = goals.try_emplace(folder);
            if (!isNew) return found->second;
            const auto& [check, path] = folders_.at(folder);
            for (std::size_t depth = 0; depth <= path.size(); ++depth) {
                const auto ways = waysFrom.find({check, path.first(depth)});
                if (ways == waysFrom.end() || ways->second.size() > mostWays) continue;
                for (const CheckedFolder& to : ways->second) {
                    std::vector<std::string> goal(to.path.begin(), to.path.end());
                    goal.insert(goal.end(), path.begin() + static_cast<std::ptrdiff_t>(depth), path.end());
                    const auto number = folders_.find({to.check, std::move(goal)});
                    if (number && std::ranges::find(found->second, *number) == found->second.end())
                        found->second.push_back(*number);
                }
            }
            return found->second;
        };

        for (const Alike& alike : alike_) {
            std::map<const Half*, std::vector<const Half*>> claims;  // on what came
            for (const Half& gone : alike.gone) {
                if (isPaired(gone)) continue;
                std::vector<const Half*> there;
                for (const Index goal : goalsOf(gone.folder)) {
                    const auto come = std::ranges::lower_bound(alike.come, goal, {}, &Half::folder);
                    if (come != alike.come.end() && come->folder == goal && !isPaired(*come))
                        there.push_back(&*come);
                }
                if (there.size() == 1) claims[there.front()].push_back(&gone);
            }
            for (const auto& [come, claimants] : claims)
                if (claimants.size() == 1) pair(*claimants.front(), *come);
        }
    }

    /// A place in ways_.
    Index wayBetween(Index from, Index to) {
        const auto [known, isNew] = waysBetween_.try_emplace({from, to});
        if (isNew) {
            const CheckedFolder& origin = folders_.at(from);
            const CheckedFolder& goal = folders_.at(to);
            const std::size_t shared = sharedEnd(origin.path, goal.path);
            Way way{.from = {origin.check, origin.path.first(origin.path.size() - shared)},
                    .to = {goal.check, goal.path.first(goal.path.size() - shared)}};
            const auto [number, isNewWay] = wayNumbers_.try_emplace(way, static_cast<Index>(ways_.size()));
            if (isNewWay) ways_.push_back({.way = std::move(way)});
            known->second = number->second;
        }
        return known->second;
    }

    struct WeighedWay {
        Way way;
        Weight paired = {};  // so far
    };

    std::span<const FileChange> changes_;
    ListedChecks checks_;
    CheckedFolders folders_;
    std::vector<Half> gone_;
    std::vector<Half> come_;
    std::vector<std::int64_t> goneFrom_;  // files, by folder
    std::vector<std::int64_t> comeTo_;
    std::vector<Alike> alike_;
    std::vector<WeighedWay> ways_;
    std::unordered_map<Way, Index, WayHash> wayNumbers_;
    std::unordered_map<FolderPair, Index, FolderPairHash> waysBetween_;
    std::vector<std::size_t> others_;
    bool hasPairs_ = false;
};

}  // namespace

std::size_t sharedEnd(const FolderPath& a, const FolderPath& b) {
    std::size_t shared = 0;
    while (shared < a.size() && shared < b.size() &&
           *(a.end() - static_cast<std::ptrdiff_t>(shared) - 1) ==
               *(b.end() - static_cast<std::ptrdiff_t>(shared) - 1))
        ++shared;
    return shared;
}

std::vector<std::size_t> movePairs(std::span<const FileChange> changes) {
    return Pairing(changes).pairs();
}

}  // namespace brindle
