#pragma once

#include "support/WatchedDisk.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <vector>

namespace brindle {

/// Remembers what SQLite does to the files of one folder while it lives, so that a power loss at any moment
/// of it can be played as often as wanted. Files are recorded from the first time they are opened.
class RecordedDisk {
public:
    explicit RecordedDisk(std::filesystem::path folder);

    /// How much was done until now.
    [[nodiscard]] std::size_t steps() const;

    /// Writes to the empty folder `to` what a power loss after `steps` steps may leave of the files. What was
    /// written before the last sync of its file is there. Of everything later each write and truncation is
    /// there, or not, or in part: of its sectors some are written, some are not, and some hold anything. Of
    /// the names that files were given or lost since, the first ones are. Gives the number of writes,
    /// truncations and names that were lost or torn.
    int playPowerLoss(std::size_t steps, std::mt19937_64& random, const std::filesystem::path& to) const;

private:
    /// What is done to a file, which has a number of its own for as long as it has its name.
    struct Step {
        DiskCall::Kind kind = DiskCall::Kind::open;
        std::size_t file = 0;
        std::int64_t offset = 0;
        std::string bytes;  // of a write; of an opening what was in the file
        bool isNew = false;
    };
    struct Replay;

    int record(const DiskCall& call);
    void open(const std::string& path);

    std::filesystem::path folder_;
    mutable std::mutex lock_;
    std::vector<Step> steps_;
    std::vector<std::string> names_;            // of all files, by number
    std::map<std::string, std::size_t> files_;  // of those that are there, by path
    WatchedDisk disk_;
};

}  // namespace brindle
