#pragma once

#include "analysis/Explorer.h"
#include "analysis/ExplorerState.h"
#include "model/UserLocale.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace brindle {

/// What an explorer shows, worked out once for each list of changes and state, however often it is drawn.
/// Used by one thread.
class ExplorerCache {
public:
    struct Output {
        ExplorerLevel level;          // of ExplorerMode::folders
        ChosenChanges files;          // of ExplorerMode::files
        ChangeTotals filteredTotals;  // of all changes that pass the filter, in whatever folder
    };

    /// The locale is that of the search and of the names' order.
    explicit ExplorerCache(std::string locale = userLocale()) : locale_(std::move(locale)) {}

    /// `dataKey` stands for the list: another list has another key. The output refers to the list's changes,
    /// so that they have to live as long as their key is asked for; it is replaced by the next call with
    /// another key or state.
    [[nodiscard]] const Output& output(std::span<const FileChange> changes, std::int64_t dataKey,
                                       const ExplorerState& state);

private:
    struct Key {
        std::int64_t dataKey;
        ExplorerState state;

        bool operator==(const Key&) const = default;
    };

    std::string locale_;
    std::optional<Key> key_;
    Output output_;
};

}  // namespace brindle
