#pragma once

#include "app/LatestAnswer.h"
#include "model/HistorySource.h"

#include <QObject>
#include <exception>
#include <memory>
#include <vector>

namespace brindle {

/// Which lists a page shows.
struct DetailsRequest {
    LocalDay first;  // of the period whose changes are listed; a single day is a period
    LocalDay last;
    LocalDay contributorsFirst;  // of the period, also ending with `last`, whose largest folders are shown
    LocationScope scope;
    bool withEstimates = false;

    bool operator==(const DetailsRequest&) const = default;
};

/// The lists themselves, of one request.
struct Details {
    DetailsRequest request;
    std::vector<FileChange> changes;
    std::vector<FolderSummary> contributors;  // in the order of largestFirst()
    std::vector<FileChange> estimates;
    std::vector<FolderSummary> estimateFolders;
};

/// Reads the lists behind the figures. Only the request that was made last is answered, and at most one other
/// is read before it: a user who runs through the days waits for two of them.
/// Thread: main.
class DayDetails : public QObject {
    Q_OBJECT

public:
    explicit DayDetails(QObject* parent = nullptr);

    void load(std::shared_ptr<HistorySource> source, DetailsRequest request);

    /// What was asked for is not wanted any more.
    void forget();

Q_SIGNALS:
    void loaded(const std::shared_ptr<const brindle::Details>& details);
    /// The lists could not be read. `error` lives for the length of the call.
    void failed(const std::exception& error);

private:
    LatestAnswer<std::shared_ptr<const Details>> latest_;  // last, so that it ends first
};

}  // namespace brindle
