#pragma once

#include "e2e/Brindle.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

// What the files say, what the history says, and how the two must agree.

namespace brindle {

/// The regular files below a folder: path below it to size.
using Listing = std::map<std::string, std::int64_t>;

/// Reads a tree with find(1).
[[nodiscard]] Listing listingOf(const std::filesystem::path& tree);

[[nodiscard]] std::int64_t totalOf(const Listing& listing);

struct Difference {
    std::string action;
    std::int64_t delta = 0;
    std::string path;
};

/// What is news between two listings: empty files that come or go are none.
[[nodiscard]] std::vector<Difference> differencesBetween(const Listing& before, const Listing& after);

/// A history as it lies on the disk. Made from a copy of its files, so that what a killed program left behind
/// is found and mended by the next one and not by the test. To be made while no program writes.
class Records {
public:
    explicit Records(const Brindle& brindle);

    /// The rows, with columns joined by "|"; none where there is no history yet.
    [[nodiscard]] std::vector<std::string> rows(const std::string& sql) const;
    [[nodiscard]] std::string value(const std::string& sql) const;
    /// All rows of all tables.
    [[nodiscard]] std::vector<std::string> everything() const;
    /// What no check may touch that could not see its location.
    [[nodiscard]] std::vector<std::string> whatWasCounted() const;
    /// The inventory of the only location.
    [[nodiscard]] Listing inventory() const;

private:
    TempFolder copy_;
    std::string file_;  // empty: there is no history
};

/// Fails the test unless the last check of the only location saw exactly these files, and recorded exactly
/// these differences.
void expectLastCheck(const Records& records, const Listing& files, const std::vector<Difference>& news);

}  // namespace brindle
