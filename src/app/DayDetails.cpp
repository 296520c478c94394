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

DayDetails::DayDetails(QObject* parent)
    : QObject(parent),
      latest_([this](const std::shared_ptr<const Details>& details) { Q_EMIT loaded(details); },
              [this](const std::exception& error) { Q_EMIT failed(error); }) {}

void DayDetails::load(std::shared_ptr<HistorySource> source, DetailsRequest request) {
    latest_.ask([source = std::move(source), request = std::move(request)] {
        return freedInBackground(detailsFrom(*source, request));
    });
}

void DayDetails::forget() {
    latest_.forget();
}

}  // namespace brindle
