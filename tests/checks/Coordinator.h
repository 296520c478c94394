#pragma once

#include "checks/ScanCoordinator.h"
#include "scan/LocationAccess.h"
#include "support/HookedTree.h"
#include "support/TempHistory.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// Real trees, a real history, and the events of the coordinator that checks them.
class Coordinator : public testing::Test {
protected:
    ScanCoordinator& coordinator() {
        if (!coordinator_)
            coordinator_.emplace(
                history.store(), locks, [this](const CoordinatorEvent& event) { hear(event); }, false,
                std::make_unique<HookedTree>([this](const std::string& root) { atEnd(root); }));
        return *coordinator_;
    }
    void end() { coordinator_.reset(); }

    [[nodiscard]] std::filesystem::path path(const std::string& name) const { return folder.path() / name; }

    void write(const std::string& name, std::size_t bytes) const {
        std::filesystem::create_directories(path(name).parent_path());
        std::ofstream(path(name)) << std::string(bytes, 'x');
    }

    /// Includes a folder, made here with one file of 10 bytes. Its id is its name.
    LocationID include(const std::string& name) {
        write(name + "/a", 10);
        LocationRecord record = makeCandidate(path(name).string(), {}, history.now).record;
        record.id = {name};
        history.store().insert(record).get();
        return record.id;
    }
    std::vector<LocationID> includeAll(const std::vector<std::string>& names) {
        std::vector<LocationID> ids;
        for (const std::string& name : names) ids.push_back(include(name));
        return ids;
    }

    CheckRunSummary run(const std::vector<LocationID>& locations) {
        return coordinator().run({.locations = locations}).get();
    }

    void hear(const CoordinatorEvent& event) {
        {
            const std::scoped_lock guard(mutex);
            events.push_back(event);
        }
        onEvent(event);
    }

    /// What was heard, in a word each; progress is left out.
    [[nodiscard]] std::vector<std::string> heard() {
        const std::scoped_lock guard(mutex);
        std::vector<std::string> words;
        for (const CoordinatorEvent& event : events) {
            if (const auto* started = std::get_if<LocationStarted>(&event))
                words.push_back("started " + started->location.rawValue);
            else if (const auto* estimating = std::get_if<LocationEstimating>(&event))
                words.push_back("estimating " + estimating->location.rawValue);
            else if (std::holds_alternative<RunFinished>(event))
                words.emplace_back("finished");
        }
        return words;
    }

    /// Makes today a day before the location's first check, so that its files have something to estimate.
    void moveBaselinesToTheFuture() const {
        execute("UPDATE locations SET baseline_at = baseline_at + 3 * 86400");
    }
    void execute(const std::string& sql) const { (void)history.rows(sql); }
    [[nodiscard]] std::string value(const std::string& sql) const { return history.rows(sql).at(0); }

    TempFolder folder;
    TempHistory history;
    RunLockSource locks{history.directory()};
    std::function<void(const CoordinatorEvent&)> onEvent = [](const CoordinatorEvent&) {};
    std::function<void(const std::string&)> atEnd = [](const std::string&) {};  // of a walk of this root
    std::mutex mutex;
    std::vector<CoordinatorEvent> events;

private:
    std::optional<ScanCoordinator> coordinator_;
};

/// The ids of the committed locations.
inline std::vector<std::string> committedBy(const CheckRunSummary& summary) {
    std::vector<std::string> ids;
    for (const CheckCommit& commit : summary.committed) ids.push_back(commit.locationID.rawValue);
    return ids;
}

}  // namespace brindle
