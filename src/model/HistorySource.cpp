#include "model/HistorySource.h"

#include "model/CheckedSum.h"

#include <utility>

namespace brindle {

std::future<ChangeCount> HistorySource::countChanges(LocalDay first, LocalDay last, LocationScope scope,
                                                     ChangeSource kind) {
    return std::async(std::launch::deferred, [this, first, last, scope = std::move(scope), kind] {
        ChangeCount count;
        streamChanges(first, last, scope, kind, [&count](const FileChange& change) {
            ++count.rows;
            count.files = checkedSum(count.files, change.fileCount);
        });
        return count;
    });
}

}  // namespace brindle
