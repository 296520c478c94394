#pragma once

#include "analysis/ExplorerState.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <utility>

namespace brindle {

/// Where in a list the user was.
struct ExplorerPlace {
    int page = 0;
    int estimatesPage = 0;
    std::string row;    // the key of the current row
    double scroll = 0;  // how far the view was scrolled down, in its own units

    bool operator==(const ExplorerPlace&) const = default;
};

/// Remembers where the user was in the lists seen of late, so that going up or clearing a search leads back
/// there. A list is told by its state, whatever the page.
class ExplorerPlaces {
public:
    void keep(ExplorerState state, ExplorerPlace place) {
        state.page = 0;
        std::erase_if(places_, [&](const auto& kept) { return kept.first == state; });
        places_.emplace_back(std::move(state), std::move(place));
        if (places_.size() > most) places_.pop_front();
    }

    [[nodiscard]] std::optional<ExplorerPlace> of(ExplorerState state) const {
        state.page = 0;
        const auto kept = std::ranges::find_if(places_, [&](const auto& one) { return one.first == state; });
        return kept == places_.end() ? std::nullopt : std::optional(kept->second);
    }

    void forget() { places_.clear(); }

private:
    static constexpr std::size_t most = 100;

    std::deque<std::pair<ExplorerState, ExplorerPlace>> places_;  // the latest at the end
};

}  // namespace brindle
