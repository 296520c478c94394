#pragma once

#include "model/CheckedSum.h"
#include "model/LocalDay.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

// What the creation dates of files say of the time before a location was first checked. Never added to
// measured totals.

namespace brindle {

/// What estimates add up to.
struct EstimateTotals {
    std::int64_t bytes = 0;
    std::int64_t files = 0;

    bool operator==(const EstimateTotals&) const = default;

    EstimateTotals& operator+=(const EstimateTotals& other) {
        bytes = checkedSum(bytes, other.bytes);
        files = checkedSum(files, other.files);
        return *this;
    }
};

/// One file, or the files of one folder summed together, that came on a day.
struct EstimateRow {
    LocalDay day;
    std::string folder;  // below the location's root, components joined by "/"; empty: directly in it
    std::string name;    // of a single file; empty for several
    EstimateTotals totals;

    bool operator==(const EstimateRow&) const = default;
};

/// Takes groups of files, valid only during the call. The same day and folder may come again: such groups
/// add up.
using EstimateGroupSink = std::function<void(std::span<const EstimateRow>)>;

/// Walks one location, hands the groups to the sink and returns the files that are rows of their own. Throws
/// ScanError, Cancelled, or what the sink throws.
using EstimateWalk = std::function<std::vector<EstimateRow>(const EstimateGroupSink&)>;

}  // namespace brindle
