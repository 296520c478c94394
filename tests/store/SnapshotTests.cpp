#include "model/DayState.h"
#include "model/Packages.h"
#include "model/SpaceBreakdown.h"
#include "store/StoredHistory.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sstream>

namespace brindle {
namespace {

constexpr int everydayRounds = 8;
constexpr double hour = 3600;

std::int64_t number(const std::string& text) {
    return std::stoll(text);
}

/// A history that a random hand made over some months, through checks and removals as they really happen.
class RandomHistory {
public:
    explicit RandomHistory(std::uint64_t seed) : random_(seed) {
        const char* zones[] = {"UTC", "Pacific/Auckland", "America/New_York"};
        history.calendar = Calendar("en_US", zones[below(3)]);
        for (auto left = 20 + below(40); left > 0; --left) {
            history.now += hour * static_cast<double>(1 + below(below(4) == 0 ? 400 : 40));
            step();
        }
        estimate();
    }

    std::size_t below(std::size_t end) { return random_() % end; }
    const std::vector<std::string>& locations() const { return all_; }

    TempHistory history;

private:
    void step() {
        if (all_.empty() || (below(8) == 0 && all_.size() < 5)) {
            all_.push_back("location" + std::to_string(all_.size()));
            history.include(all_.back());
            return;
        }
        const std::string& id = all_[below(all_.size())];
        if (history.record(id).removedAt) return;
        if (below(15) == 0) return history.store().remove({id}, history.now).get();
        check(id);
    }

    void check(const std::string& id) {
        Files files;
        for (auto left = below(6); left > 0; --left)
            files["d" + std::to_string(below(3)) + "/x.app/f" + std::to_string(below(3))] =
                static_cast<std::int64_t>(below(1000));
        ScanReport report{.allocatedBytes = static_cast<std::int64_t>(below(500'000)),
                          .cloudOnlyBytes = static_cast<std::int64_t>(below(100))};
        report.trashBytes = report.allocatedBytes / 10;
        if (below(4) == 0) report.unreadable = {{"locked", true}};
        auto request = history.request(id, scriptedWalk(files, report));
        const auto free = static_cast<std::int64_t>(below(500'000));
        request.readVolume = [&] {
            return VolumeReading{.id = "volume",
                                 .name = "Disk",
                                 .mountPath = "/",
                                 .totalBytes = 1'000'000,
                                 .freeBytes = free,
                                 .availableBytes = free + 1000,
                                 .readAt = history.now};
        };
        static_cast<void>(history.store().commit(request).get());
    }

    void estimate() {
        const LocalDay today = history.calendar.day(history.now);
        for (auto left = below(30); left > 0; --left)
            rowsOf(history.file(),
                   "INSERT INTO estimates (location_id, local_day, folder, name, bytes, file_count, "
                   "contributor, made_at) VALUES ('" +
                       all_[below(all_.size())] + "', '" +
                       history.calendar.addingDays(today, -static_cast<int>(below(120))).text() +
                       "', 'd', '', " + std::to_string(below(1000)) + ", " + std::to_string(below(3)) +
                       ", 'd', 0)");
    }

    std::mt19937_64 random_;
    std::vector<std::string> all_;
};

/// The same figures as a snapshot's, each counted from the rows that it is about, one by one.
class Recount {
public:
    Recount(RandomHistory& made, const LocalDay& today)
        : made_(made), calendar_(made.history.calendar), since_(calendar_.addingDays(today, -89)) {
        expected.today = today;
        countLocations();
        countRuns();
        for (const auto& row : table("SELECT location_id, local_day, delta FROM observations"))
            if (const LocalDay day = *LocalDay::parse(row[1]); day >= since_)
                expected.dayTotals[{row[0]}][day].add(number(row[2]), 1);
        for (const auto& row : table("SELECT location_id, local_day, bytes, file_count FROM estimates")) {
            const LocalDay day = *LocalDay::parse(row[1]);
            if (day < since_) continue;
            expected.estimates[{row[0]}][day].bytes += number(row[2]);
            expected.estimates[{row[0]}][day].files += number(row[3]);
        }
        countSpace();
    }

    [[nodiscard]] DayState state(const LocalDay& day, const LocationScope& scope) const {
        if (day > expected.today) return DayFuture{};
        std::set<std::string> tracked;
        std::set<std::string> checked;
        bool isPartial = false;
        for (const auto& row : table("SELECT id, baseline_at, removed_at FROM locations")) {
            const bool hasBegun = row[1] != "NULL" && dayOf(row[1]) <= day;
            const bool goesOn = row[2] == "NULL" || dayOf(row[2]) >= day;
            if (scope.holds({row[0]}) && hasBegun && goesOn) tracked.insert(row[0]);
        }
        for (const auto& row :
             table("SELECT location_id, partial FROM scan_runs WHERE local_day = '" + day.text() + "'")) {
            if (day < since_ || !tracked.contains(row[0])) continue;
            checked.insert(row[0]);
            if (row[1] == "1") isPartial = true;
        }
        if (!checked.empty()) {
            DayRecorded recorded{.partial = isPartial || checked != tracked};
            for (const auto& row :
                 table("SELECT location_id, delta FROM observations WHERE local_day = '" + day.text() + "'"))
                if (checked.contains(row[0])) recorded.totals.add(number(row[1]), 1);
            return recorded;
        }
        EstimateTotals sum;
        for (const auto& row : table("SELECT location_id, bytes, file_count FROM estimates WHERE local_day "
                                     "= '" +
                                     day.text() + "'")) {
            if (day < since_ || !scope.holds({row[0]})) continue;
            sum.bytes += number(row[1]);
            sum.files += number(row[2]);
        }
        if (sum.files > 0) return DayEstimated{sum};
        return DayWithoutCheck{};
    }

    HistorySnapshot expected;

private:
    using Row = std::vector<std::string>;

    [[nodiscard]] std::vector<Row> table(const std::string& sql) const {
        std::vector<Row> table;
        for (const std::string& text : made_.history.rows(sql)) {
            std::istringstream stream(text);
            Row row;
            for (std::string cell; std::getline(stream, cell, '|');) row.push_back(cell);
            table.push_back(std::move(row));
        }
        return table;
    }

    [[nodiscard]] LocalDay dayOf(const std::string& seconds) const {
        return calendar_.day(std::stod(seconds));
    }

    void countLocations() {
        for (const std::string& id : made_.locations()) {
            const LocationRecord record = made_.history.record(id);
            TrackedLocation location{.id = record.id,
                                     .name = record.name,
                                     .path = record.path,
                                     .volumeID = "volume",
                                     .status = record.status,
                                     .trackedBytes = record.trackedBytes,
                                     .lastCheck = record.lastCheckAt};
            if (record.baselineAt) location.trackingStart = calendar_.day(*record.baselineAt);
            if (record.removedAt) location.trackingEnd = calendar_.day(*record.removedAt);
            expected.locations.push_back(location);
        }
    }

    void countRuns() {
        for (const auto& row : table("SELECT location_id, local_day, partial, tracked_bytes FROM scan_runs "
                                     "ORDER BY id")) {
            const LocalDay day = *LocalDay::parse(row[1]);
            expected.trackedTotals[{row[0]}][day] = number(row[3]);
            if (day < since_) continue;
            expected.checkedDays[{row[0]}].insert(day);
            if (row[2] == "1") expected.partialDays[{row[0]}].insert(day);
        }
    }

    void countSpace() {
        const auto samples = table("SELECT free, available, read_at FROM capacity_samples ORDER BY read_at");
        if (samples.empty()) return;
        const VolumeReading latest{.id = "volume",
                                   .name = "Disk",
                                   .mountPath = "/",
                                   .totalBytes = 1'000'000,
                                   .freeBytes = number(samples.back()[0]),
                                   .availableBytes = number(samples.back()[1]),
                                   .readAt = std::stod(samples.back()[2])};
        expected.volumes = {latest};
        // None of the locations lies within another one.
        FoundSpace found;
        for (const auto& row :
             table("SELECT allocated_bytes, trash_bytes FROM scan_runs r WHERE id = (SELECT MAX(id) FROM "
                   "scan_runs s WHERE s.location_id = r.location_id) AND location_id IN (SELECT id FROM "
                   "locations WHERE removed_at IS NULL)")) {
            found.allocatedBytes += number(row[0]);
            found.trashBytes += number(row[1]);
        }
        expected.breakdowns["volume"] = spaceBreakdown(latest, found);
    }

    RandomHistory& made_;
    const Calendar& calendar_;
    LocalDay since_;
};

TEST(Snapshot, SaysWhatTheRowsSayAndSoDoTheDays) {
    const std::uint64_t seed = testSeed();
    for (int round = 0; round < testRounds(everydayRounds); ++round) {
        SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed) + ", round " + std::to_string(round));
        RandomHistory made(seed + static_cast<std::uint64_t>(round));
        TempHistory& history = made.history;
        StoredHistory source(history.sharedStore(), history.calendar, [&] { return history.now; });
        const LocalDay today = history.calendar.day(history.now);
        const Recount recount(made, today);
        const HistorySnapshot& expected = recount.expected;
        const HistorySnapshot snapshot = source.snapshot().get();

        EXPECT_EQ(snapshot.locations, expected.locations);
        EXPECT_EQ(snapshot.checkedDays, expected.checkedDays);
        EXPECT_EQ(snapshot.partialDays, expected.partialDays);
        EXPECT_EQ(snapshot.dayTotals, expected.dayTotals);
        EXPECT_EQ(snapshot.trackedTotals, expected.trackedTotals);
        EXPECT_EQ(snapshot.estimates, expected.estimates);
        EXPECT_EQ(snapshot.volumes, expected.volumes);
        EXPECT_EQ(snapshot.breakdowns, expected.breakdowns);
        ASSERT_EQ(snapshot, expected);

        const LocalDay first = history.calendar.addingDays(today, -60);
        std::vector<LocationScope> scopes{{}, {LocationID{"nowhere"}}};
        for (const std::string& id : made.locations()) scopes.push_back({LocationID{id}});
        for (const LocationScope& scope : scopes) {
            const auto changes = history.store().changes(first, today, scope.location).get();
            ASSERT_EQ(source.periodContributors(first, today, scope, 3).get(),
                      largestFirst(groupedByFolder(changes, contributorDepth), 3));
        }
        for (const LocalDay& day : history.calendar.days(history.calendar.addingDays(today, -95),
                                                         history.calendar.addingDays(today, 2)))
            for (const LocationScope& scope : scopes)
                ASSERT_EQ(dayState(snapshot, day, scope), recount.state(day, scope))
                    << day.text() << " " << (scope.location ? scope.location->rawValue : "all");
    }
}

}  // namespace
}  // namespace brindle
