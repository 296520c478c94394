#pragma once

#include "analysis/ExplorerCache.h"
#include "analysis/Moves.h"
#include "app/DayDetails.h"
#include "app/pages/ExplorerRows.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

/// What an explorer is asked to show.
struct ExplorerQuestion {
    std::shared_ptr<const Details> details;
    ExplorerState state;    // its page is that of the recorded changes
    int estimatesPage = 0;  // of the list of estimated changes; the first is 0
    std::vector<TrackedLocation> locations;
    Calendar calendar;
};

/// What an explorer lists of one kind of changes.
struct ExplorerSection {
    ChangeTotals passing;  // of all changes that pass the filter, in whatever folder
    ChangeTotals inside;   // of those of them in the folder and below it
    std::size_t rows = 0;  // on all pages
    int page = 0;          // the first is 0
    int pages = 1;
    std::size_t firstRow = 0;   // of the page, among all rows
    std::size_t rowsShown = 0;  // on the page

    bool operator==(const ExplorerSection&) const = default;
};

/// What an explorer shows: a page of recorded rows, folders before files, and behind them a page of estimated
/// ones.
struct ExplorerAnswer {
    DetailsRequest request;
    ExplorerState state;  // with the page that is shown, the nearest one that there is
    std::vector<ExplorerRow> rows;
    ExplorerSection recorded;
    ExplorerSection estimated;
    ChangeTotals recordedTotals;   // of the whole request, whatever passes the filter
    ChangeTotals estimatedTotals;  // likewise; never added to the recorded ones
    std::string explanation;       // of what is recorded, in sentences; empty when nothing is
};

/// Answers explorers' questions. It keeps the lists of the last question, so that a page is turned without
/// sorting again. Used by one thread at a time.
class ExplorerPages {
public:
    [[nodiscard]] ExplorerAnswer answer(const ExplorerQuestion& question);

private:
    void take(const ExplorerQuestion& question);

    std::shared_ptr<const Details> details_;  // that the lists are of
    std::int64_t dataKey_ = 0;
    ExplorerCache recorded_;
    ExplorerCache estimated_;
    ChangeTotals recordedTotals_;
    ChangeTotals estimatedTotals_;
    std::string explanation_;
    Moves moves_;  // of the details' changes
};

}  // namespace brindle
