#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace brindle {

/// Files with their sizes in bytes, as the file system tells them.
using Files = std::map<std::filesystem::path, std::int64_t>;

inline Files filesIn(const std::vector<std::filesystem::path>& folders) {
    Files files;
    for (const auto& folder : folders)
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            if (entry.is_regular_file()) files[entry.path()] = static_cast<std::int64_t>(entry.file_size());
    return files;
}

/// What came and what went, in bytes.
struct Movement {
    std::int64_t added = 0;
    std::int64_t freed = 0;

    [[nodiscard]] std::int64_t net() const { return added - freed; }
    Movement& operator+=(const Movement& other) {
        added += other.added;
        freed += other.freed;
        return *this;
    }
};

inline Movement movement(const Files& before, const Files& after) {
    Movement moved;
    for (const auto& [path, size] : after) {
        const auto old = before.find(path);
        const std::int64_t difference = old == before.end() ? size : size - old->second;
        (difference > 0 ? moved.added : moved.freed) += difference > 0 ? difference : -difference;
    }
    for (const auto& [path, size] : before)
        if (!after.contains(path)) moved.freed += size;
    return moved;
}

inline std::int64_t sizeOf(const Files& files) {
    std::int64_t bytes = 0;
    for (const auto& file : files) bytes += file.second;
    return bytes;
}

}  // namespace brindle
