#include "analysis/ExplorerCache.h"

#include "model/TextSearch.h"

namespace brindle {

const ExplorerCache::Output& ExplorerCache::output(std::span<const FileChange> changes, std::int64_t dataKey,
                                                   const ExplorerState& state) {
    Key key{dataKey, state};
    if (key_ == key) return output_;
    const ChosenChanges kept = filtered(changes, state.direction, TextSearch(state.search, locale_));
    Output output{.level = {}, .files = {}, .filteredTotals = totalsOf(kept)};
    switch (state.mode) {
        case ExplorerMode::folders:
            output.level = levelOf(kept, state.folder);
            break;
        case ExplorerMode::files:
            output.files = filesIn(kept, state.folder, state.sort, locale_);
            break;
    }
    output_ = std::move(output);
    key_ = std::move(key);
    return output_;
}

}  // namespace brindle
