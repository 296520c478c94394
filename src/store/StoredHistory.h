#pragma once

#include "model/Calendar.h"
#include "model/HistorySource.h"
#include "store/HistoryStore.h"

namespace brindle {

/// The recorded history as the pages read it. `store` must outlive it; errors are SQLiteError.
class StoredHistory final : public HistorySource {
public:
    explicit StoredHistory(HistoryStore& store, Calendar calendar = Calendar::current(),
                           Clock now = systemNow, int days = keptDays);

    [[nodiscard]] std::future<HistorySnapshot> snapshot() override;
    [[nodiscard]] std::future<std::vector<FileChange>> dayChanges(LocalDay day, LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FolderSummary>> periodContributors(LocalDay first, LocalDay last,
                                                                             LocationScope scope,
                                                                             std::size_t limit) override;
    [[nodiscard]] std::future<std::vector<FileChange>> periodEstimates(LocalDay first, LocalDay last,
                                                                       LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FileChange>> allEstimates(LocationScope scope) override;

private:
    HistoryStore& store_;
    Calendar calendar_;
    Clock now_;
    int days_;
};

}  // namespace brindle
