#include "analysis/CheckedFolders.h"

#include <map>
#include <set>
#include <string_view>

namespace brindle {
namespace {

/// Between the ends of two checks of one run. Shorter than the time between two runs.
constexpr UnixTime longestPause = 240;

using Check = std::pair<UnixTime, std::string_view>;  // its end and its location

}  // namespace

ListedChecks::ListedChecks(std::span<const FileChange> changes) {
    std::map<Check, std::uint32_t> numbers;
    const std::pair<const Check, std::uint32_t>* last = nullptr;
    checkOf_.reserve(changes.size());
    for (const FileChange& change : changes) {
        const Check check(change.observedAt, change.locationID.rawValue);
        if (last == nullptr || last->first != check)
            last = &*numbers.try_emplace(check, static_cast<std::uint32_t>(numbers.size())).first;
        checkOf_.push_back(last->second);
    }
    runOf_.resize(numbers.size());
    std::uint32_t run = 0;
    std::set<std::string_view> checked;
    UnixTime before = 0;
    for (const auto& [check, number] : numbers) {
        const auto& [end, location] = check;
        if (checked.contains(location) || end - before > longestPause) {
            ++run;
            checked.clear();
        }
        checked.insert(location);
        before = end;
        runOf_[number] = run;
    }
}

std::uint32_t CheckedFolders::numberOf(std::uint32_t check, const FolderPath& path) {
    const Shared shared{check, path.identity()};
    if (last_ != nullptr && last_->first == shared) return last_->second;
    auto found = shared_.find(shared);
    if (found == shared_.end()) {
        const auto [known, isNew] =
            numbers_.try_emplace({check, path}, static_cast<std::uint32_t>(folders_.size()));
        if (isNew) folders_.push_back(&known->first);
        found = shared_.emplace(shared, known->second).first;
    }
    last_ = &*found;
    return last_->second;
}

std::optional<std::uint32_t> CheckedFolders::find(std::uint32_t check, const FolderPath& path) const {
    const auto found = shared_.find({check, path.identity()});
    return found == shared_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::uint32_t> CheckedFolders::find(const CheckedFolder& folder) const {
    const auto found = numbers_.find(folder);
    return found == numbers_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace brindle
