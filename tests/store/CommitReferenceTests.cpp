#include "model/Packages.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <random>
#include <utility>

namespace brindle {
namespace {

/// The rows that checks are to leave, worked out from whole lists of files in memory.
class ExpectedRows {
public:
    void check(const std::string& id, const Files& files, const ScanReport& report, UnixTime at,
               const std::string& day) {
        Location& location = locations_[id];
        const bool isBaseline = std::exchange(location.lastCheck, at) == 0;
        const Reasons hiddenBefore = std::exchange(location.hidden, reasonsOf(report));
        const Files before = std::exchange(location.files, files);
        ++checks_;
        const auto observe = [&](const std::string& path, const char* action, std::int64_t delta) {
            const auto slash = path.rfind('/');
            const std::string folder = slash == path.npos ? "" : path.substr(0, slash);
            observations_.push_back(fmt::format("{}|{}|{}|{}|{}|{}|{}|{}|{}", checks_, id, folder,
                                                path.substr(slash + 1), action, delta, at, day,
                                                contributor(folder)));
            location.days[day].add(delta, 1);
        };
        for (const auto& [path, size] : files) {
            const auto old = before.find(path);
            if (old != before.end() && old->second != size)
                observe(path, size > old->second ? "grew" : "shrank", size - old->second);
            if (old == before.end() && size > 0 && !isBaseline && !isUnderAny(path, hiddenBefore))
                observe(path, "added", size);
        }
        for (const auto& [path, size] : before) {
            if (files.contains(path)) continue;
            if (isUnderAny(path, location.hidden))
                location.files[path] = size;
            else if (size > 0)
                observe(path, "removed", -size);
        }
        std::int64_t tracked = 0;
        for (const auto& [path, size] : location.files) tracked += size;
        location.tracked[day] = location.lastTracked = tracked;
        const auto unreadable = report.unreadable.size();
        runs_.push_back(fmt::format("{}|{}|{}|{}|{}|{}|{}|{}|{}|{}|{}", id, at, day,
                                    isBaseline ? "baseline" : "check", unreadable > 0 ? 1 : 0, files.size(),
                                    tracked, unreadable, report.cloudOnlyBytes, report.allocatedBytes,
                                    report.trashBytes));
    }

    void expectIn(const TempHistory& history) const {
        std::vector<std::string> inventory, hidden, days, tracked, lastChecks;
        for (const auto& [id, location] : locations_) {
            for (const auto& [path, size] : location.files)
                inventory.push_back(fmt::format("{}|{}|{}", id, path, size));
            for (const auto& [path, reason] : location.hidden)
                hidden.push_back(fmt::format("{}|{}|{}", id, path, reason));
            for (const auto& [day, sum] : location.days)
                days.push_back(fmt::format("{}|{}|{}|{}|{}", id, day, sum.added, sum.freed, sum.count));
            for (const auto& [day, bytes] : location.tracked)
                tracked.push_back(fmt::format("{}|{}|{}", id, day, bytes));
        }
        const auto expectRows = [&](const std::string& query, std::vector<std::string> expected) {
            auto found = history.rows("SELECT " + query);
            std::ranges::sort(found);
            std::ranges::sort(expected);
            EXPECT_EQ(found, expected);
        };
        expectRows("location_id, rel_path, size FROM inventory", inventory);
        expectRows(
            "scan_id, location_id, folder, name, action, delta, CAST(observed_at AS INTEGER), local_day, "
            "contributor FROM observations",
            observations_);
        expectRows(
            "location_id, CAST(finished_at AS INTEGER), local_day, outcome, partial, files_seen, "
            "tracked_bytes, unreadable_folders, cloud_only_bytes, allocated_bytes, trash_bytes FROM "
            "scan_runs",
            runs_);
        expectRows("location_id, local_day, added, freed, count FROM daily_totals", days);
        expectRows("location_id, local_day, bytes FROM tracked_totals", tracked);
        expectRows("location_id, rel_path, reason FROM unreadable_folders", hidden);
    }

    /// What the location's record and the answer to its last check are to tell.
    void expectTold(const LocationRecord& record, const CheckCommit& told) const {
        const Location& location = locations_.at(record.id.rawValue);
        EXPECT_EQ(told.trackedBytes, location.lastTracked);
        EXPECT_EQ(record.trackedBytes, location.lastTracked);
        EXPECT_EQ(told.finishedAt, location.lastCheck);
        EXPECT_EQ(record.lastCheckAt, location.lastCheck);
        EXPECT_TRUE(record.baselineAt);
    }

private:
    using Reasons = std::map<std::string, int>;

    struct Location {
        Files files;
        Reasons hidden;
        std::map<std::string, ChangeTotals> days;
        std::map<std::string, std::int64_t> tracked;
        std::int64_t lastTracked = 0;
        UnixTime lastCheck = 0;
    };

    static Reasons reasonsOf(const ScanReport& report) {
        Reasons reasons;
        for (const auto& folder : report.unreadable)
            reasons.emplace(folder.relativePath, folder.isPermission ? 1 : 0);
        for (const auto& path : report.cloudOnlyFolders) reasons.emplace(path, 2);
        return reasons;
    }

    static bool isUnderAny(const std::string& path, const Reasons& folders) {
        for (auto end = path.find('/'); end != path.npos; end = path.find('/', end + 1))
            if (folders.contains(path.substr(0, end))) return true;
        return folders.contains(path);
    }

    std::map<std::string, Location> locations_;
    std::vector<std::string> observations_;
    std::vector<std::string> runs_;
    int checks_ = 0;
};

/// Locations whose files come, go and change at random among paths that sort against intuition.
class RandomChecks {
public:
    explicit RandomChecks(std::uint64_t seed) : random_(seed) {}

    /// Changes some of the files, or once in a while all of them.
    void change(Files& files) {
        if (oneIn(20)) files.clear();
        for (std::uint64_t i = below(oneIn(10) ? 300 : 12); i > 0; --i) {
            const std::string path = randomPath();
            if (oneIn(3))
                files.erase(path);
            else
                files[path] = static_cast<std::int64_t>(below(4)) * 10;
        }
    }

    ScanReport report() {
        ScanReport report{.allocatedBytes = static_cast<std::int64_t>(below(100)),
                          .trashBytes = static_cast<std::int64_t>(below(100)),
                          .cloudOnlyBytes = static_cast<std::int64_t>(below(100))};
        while (oneIn(3)) report.unreadable.push_back({randomPath(), oneIn(2)});
        while (oneIn(6)) report.cloudOnlyFolders.push_back(randomPath());
        return report;
    }

    /// Somebody who crosses time zones and days without 24 hours, and whose clock is set back at times.
    void travel(TempHistory& history) {
        static const char* zones[] = {"Europe/Berlin",  "Pacific/Honolulu", "Pacific/Kiritimati",
                                      "America/Havana", "Asia/Kathmandu",   "Australia/Lord_Howe"};
        if (oneIn(4)) history.calendar = Calendar("en_US", zones[below(std::size(zones))]);
        const auto seconds = static_cast<double>(below(100'000));
        history.now += oneIn(6) ? -3 * seconds : seconds;
    }

    std::uint64_t below(std::uint64_t end) { return random_() % end; }
    bool oneIn(std::uint64_t chances) { return below(chances) == 0; }

private:
    std::string randomPath() {
        // Among them names before and after "/" in the order of bytes, beyond ASCII, and packages.
        static const std::vector<std::string> names = {"a",     "a-b", "a.txt", "a0",
                                                       "a\x01", "b",   "\xff",  "Z.app"};
        std::string path = names[below(names.size())];
        while (oneIn(2)) path += "/" + names[below(names.size())];
        return path;
    }

    std::mt19937_64 random_;
};

// A path never names a file and a folder at once in a real tree; here it may.
TEST(CommitReference, ChecksLeaveTheRowsThatWholeListsOfFilesSay) {
    const std::uint64_t first = testSeed();
    for (int round = 0; round < testRounds(30) && !HasFailure(); ++round) {
        const std::uint64_t seed = first + static_cast<std::uint64_t>(round);
        SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
        RandomChecks random(seed);
        TempHistory history;
        history.now = 1'761'350'400;  // the evening before Europe's clocks go back
        ExpectedRows expected;
        std::map<std::string, Files> files{{"one", {}}, {"two", {}}};
        for (const auto& [id, none] : files) history.include(id);
        for (int check = 0; check < 10 && !HasFailure(); ++check) {
            SCOPED_TRACE("check " + std::to_string(check));
            const std::string id = random.oneIn(2) ? "one" : "two";
            random.change(files[id]);
            const ScanReport report = random.report();
            random.travel(history);
            const CheckCommit told = history.check(id, files[id], report);
            expected.check(id, files[id], report, history.now, history.calendar.day(history.now).text());
            expected.expectIn(history);
            expected.expectTold(history.record(id), told);
        }
    }
}

TEST(CommitReference, AWalkThatIsOutOfOrderIsRefusedAndNothingIsRecorded) {
    TempHistory history;
    history.include("home");
    history.check("home", {{"a", 1}, {"b", 2}});
    const auto before = history.everything();
    for (const std::vector<ScanEntry>& entries : {std::vector<ScanEntry>{{"b", 2, 0}, {"a", 1, 0}},
                                                  std::vector<ScanEntry>{{"a", 1, 0}, {"a", 1, 0}}}) {
        const Walk walk = [&](const EntrySink& sink) {
            sink(entries);
            return ScanReport{};
        };
        EXPECT_THROW(history.store().commit(history.request("home", walk)).get(), std::logic_error);
    }
    EXPECT_EQ(history.everything(), before);
}

}  // namespace
}  // namespace brindle
