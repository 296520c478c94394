#pragma once

#include "model/Walk.h"
#include "store/HistoryStore.h"
#include "support/TempFolder.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

/// The files of a location as a scripted walk reports them: path to size.
using Files = std::map<std::string, std::int64_t>;

/// All rows of all tables of a database file that outlive a check, in a stable order.
[[nodiscard]] std::vector<std::string> everythingIn(const std::string& file);

/// A history in a temporary folder, with a clock of its own and scripted walks.
class TempHistory {
public:
    /// The open history; opened at the first call and after close().
    [[nodiscard]] HistoryStore& store() { return *sharedStore(); }
    [[nodiscard]] const std::shared_ptr<HistoryStore>& sharedStore();
    void close() { store_.reset(); }

    /// Its name would end a text of SQL.
    [[nodiscard]] std::string directory() const { return (folder_.path() / "Ann's data").string(); }
    [[nodiscard]] std::string file() const { return directory() + "/History.sqlite"; }

    /// Adds a location and gives its record back as stored.
    LocationRecord include(const std::string& id);
    [[nodiscard]] LocationRecord record(const std::string& id);

    /// Runs one check of the location, whose walk sees these files and reports the other fields of `report`.
    CheckCommit check(const std::string& id, const Files& files, ScanReport report = {});
    [[nodiscard]] CheckRequest request(const std::string& id, Walk walk);

    /// See rowsOf().
    [[nodiscard]] std::vector<std::string> rows(const std::string& sql) const;

    [[nodiscard]] std::vector<std::string> everything() const { return everythingIn(file()); }

    UnixTime now = 1'772'884'800;  // 2026-03-07 12:00 UTC
    Calendar calendar{"en_US", "UTC"};

private:
    TempFolder folder_;
    std::shared_ptr<HistoryStore> store_;
};

/// The rows of an SQL text on a database file, each with its columns joined by "|" (NULL as "NULL"), through
/// a connection of its own. Also runs scripts.
std::vector<std::string> rowsOf(const std::string& file, const std::string& sql);

/// A walk that reports these files in byte order, in batches, and then returns `report` with its sums.
[[nodiscard]] Walk scriptedWalk(Files files, ScanReport report = {});

}  // namespace brindle
