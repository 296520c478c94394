#pragma once

#include "model/Change.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

// Which check found a change, and where. What is told here by number is numbered from 0.

namespace brindle {

/// The checks that found the changes of a list, told apart by their location and their end, and the runs that
/// they belong to: in a run every check is of another location and ends soon after the one before.
class ListedChecks {
public:
    explicit ListedChecks(std::span<const FileChange> changes);

    /// The check that found the change at this place of the list.
    [[nodiscard]] std::uint32_t of(std::uint32_t change) const { return checkOf_[change]; }
    [[nodiscard]] std::uint32_t runOf(std::uint32_t check) const { return runOf_[check]; }

private:
    std::vector<std::uint32_t> checkOf_;  // by change
    std::vector<std::uint32_t> runOf_;    // by check
};

/// A folder as one check found it.
struct CheckedFolder {
    std::uint32_t check = 0;
    FolderPath path;

    bool operator==(const CheckedFolder&) const = default;
};

}  // namespace brindle

template <>
struct std::hash<brindle::CheckedFolder> {
    std::size_t operator()(const brindle::CheckedFolder& folder) const noexcept {
        std::size_t seed = folder.check;
        for (const auto& component : folder.path) seed = seed * 31 + std::hash<std::string>{}(component);
        return seed;
    }
};

namespace brindle {

/// Numbers folders, so that equal ones have one number, whether or not they share their path. Lives no longer
/// than the list whose folders it is asked about.
class CheckedFolders {
public:
    [[nodiscard]] std::uint32_t numberOf(std::uint32_t check, const FolderPath& path);

    /// Nothing for a folder that has no number; of the first, also where an equal one that does not share its
    /// path has.
    [[nodiscard]] std::optional<std::uint32_t> find(std::uint32_t check, const FolderPath& path) const;
    [[nodiscard]] std::optional<std::uint32_t> find(const CheckedFolder& folder) const;

    [[nodiscard]] const CheckedFolder& at(std::uint32_t number) const { return *folders_[number]; }
    [[nodiscard]] std::size_t size() const { return folders_.size(); }

private:
    using Shared = std::pair<std::uint32_t, const void*>;  // a check and a path's identity
    struct SharedHash {
        std::size_t operator()(const Shared& shared) const {
            return std::hash<const void*>{}(shared.second) * 31 + shared.first;
        }
    };
    using SharedNumbers = std::unordered_map<Shared, std::uint32_t, SharedHash>;

    std::unordered_map<CheckedFolder, std::uint32_t> numbers_;
    std::vector<const CheckedFolder*> folders_;  // by number
    SharedNumbers shared_;
    const SharedNumbers::value_type* last_ = nullptr;
};

}  // namespace brindle
