#include "e2e/Records.h"

#include "support/TempHistory.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>

namespace brindle {
namespace {

namespace fs = std::filesystem;

/// "NUMBER|TEXT", of which the text may hold anything.
std::pair<std::string, std::int64_t> textAndNumber(const std::string& row) {
    const auto bar = row.find('|');
    return {row.substr(bar + 1), std::stoll(row.substr(0, bar))};
}

std::vector<std::string> sortedRows(const std::vector<Difference>& differences) {
    std::vector<std::string> rows;
    for (const Difference& difference : differences)
        rows.push_back(difference.action + "|" + std::to_string(difference.delta) + "|" + difference.path);
    std::ranges::sort(rows);
    return rows;
}

}  // namespace

Listing listingOf(const fs::path& tree) {
    const auto found = runProgram(
        {.arguments = {"find", tree.native(), "-type", "f", "-printf", "%s %P\\0"}, .environment = {}});
    if (found.exitCode != 0) throw std::runtime_error("find: " + found.error);
    Listing listing;
    for (std::size_t begin = 0; begin < found.output.size();) {
        const auto end = found.output.find('\0', begin);
        const auto space = found.output.find(' ', begin);
        listing[found.output.substr(space + 1, end - space - 1)] =
            std::stoll(found.output.substr(begin, space - begin));
        begin = end + 1;
    }
    return listing;
}

std::int64_t totalOf(const Listing& listing) {
    std::int64_t total = 0;
    for (const auto& [path, size] : listing) total += size;
    return total;
}

std::vector<Difference> differencesBetween(const Listing& before, const Listing& after) {
    std::vector<Difference> news;
    for (const auto& [path, size] : after) {
        const auto old = before.find(path);
        if (old == before.end()) {
            if (size > 0) news.push_back({"added", size, path});
        } else if (size != old->second) {
            news.push_back({size > old->second ? "grew" : "shrank", size - old->second, path});
        }
    }
    for (const auto& [path, size] : before)
        if (size > 0 && !after.contains(path)) news.push_back({"removed", -size, path});
    return news;
}

Records::Records(const Brindle& brindle) {
    if (!fs::exists(brindle.historyFile())) return;
    file_ = copy_.path() / "History.sqlite";
    for (const char* suffix : {"", "-wal"})
        if (const fs::path source = brindle.historyFile().native() + suffix; fs::exists(source))
            fs::copy_file(source, file_ + suffix);
}

std::vector<std::string> Records::rows(const std::string& sql) const {
    return file_.empty() ? std::vector<std::string>() : rowsOf(file_, sql);
}

std::string Records::value(const std::string& sql) const {
    const auto found = rows(sql);
    return found.empty() ? "" : found.front();
}

std::vector<std::string> Records::everything() const {
    return file_.empty() ? std::vector<std::string>() : everythingIn(file_);
}

std::vector<std::string> Records::whatWasCounted() const {
    std::vector<std::string> all;
    for (const std::string table :
         {"inventory", "observations", "daily_totals", "tracked_totals", "scan_runs"})
        for (const std::string& row : rows("SELECT * FROM " + table + " ORDER BY 1, 2"))
            all.push_back(table + ": " + row);
    return all;
}

Listing Records::inventory() const {
    Listing files;
    for (const std::string& row : rows("SELECT size, rel_path FROM inventory"))
        files.insert(textAndNumber(row));
    return files;
}

void expectLastCheck(const Records& records, const Listing& files, const std::vector<Difference>& news) {
    EXPECT_EQ(records.inventory(), files);
    auto recorded = records.rows(
        "SELECT action, delta, CASE folder WHEN '' THEN name ELSE folder || '/' || name END "
        "FROM observations WHERE scan_id = (SELECT MAX(id) FROM scan_runs)");
    std::ranges::sort(recorded);
    EXPECT_EQ(recorded, sortedRows(news));

    const auto total = std::to_string(totalOf(files));
    const auto count = std::to_string(files.size());
    EXPECT_EQ(records.value("SELECT tracked_bytes FROM locations"), total);
    EXPECT_EQ(records.value("SELECT files_seen, tracked_bytes FROM scan_runs ORDER BY id DESC LIMIT 1"),
              count + "|" + total);
    EXPECT_EQ(records.value("SELECT bytes FROM tracked_totals ORDER BY local_day DESC LIMIT 1"), total);
    // Each day's totals are the sums of what was recorded on it.
    EXPECT_EQ(records.rows("SELECT local_day, added, freed, count FROM daily_totals ORDER BY 1"),
              records.rows("SELECT local_day, SUM(MAX(delta, 0)), SUM(MAX(-delta, 0)), COUNT(*) "
                           "FROM observations GROUP BY 1 ORDER BY 1"));
}

}  // namespace brindle
