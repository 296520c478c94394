#include "app/DayDetails.h"

#include "model/FolderSummary.h"
#include "model/Packages.h"

#include <cstddef>
#include <utility>

namespace brindle {
namespace {

constexpr std::size_t contributorsShown = 50;

Details detailsFrom(HistorySource& source, const DetailsRequest& request) {
    const auto& [first, last, contributorsFirst, scope, withEstimates] = request;
    Details details{
        .request = request,
        .changes = first == last ? source.dayChanges(first, scope).get()
                                 : source.periodChanges(first, last, scope).get(),
        .contributors = source.periodContributors(contributorsFirst, last, scope, contributorsShown).get(),
        .estimates = {},
        .estimateFolders = {}};
    if (withEstimates) {
        details.estimates = source.periodEstimates(first, last, scope).get();
        details.estimateFolders =
            largestFirst(groupedByFolder(details.estimates, contributorDepth), contributorsShown);
    }
    return details;
}

}  // namespace

void DayDetails::load(std::shared_ptr<HistorySource> source, DetailsRequest request) {
    isWanted_ = false;
    next_ = Wanted{std::move(source), std::move(request)};
    if (!isReading_) end();
}

void DayDetails::forget() {
    isWanted_ = false;
    next_.reset();
}

void DayDetails::read(const Wanted& wanted) {
    isReading_ = true;
    isWanted_ = true;
    background_.run([wanted] { return freedInBackground(detailsFrom(*wanted.source, wanted.request)); },
                    [this](const std::shared_ptr<const Details>& details) {
                        if (isWanted_) Q_EMIT loaded(details);
                        end();
                    },
                    [this](const std::exception& error) {
                        if (isWanted_) Q_EMIT failed(error);
                        end();
                    });
}

void DayDetails::end() {
    isReading_ = false;
    if (next_) read(*std::exchange(next_, std::nullopt));
}

}  // namespace brindle
