#pragma once

#include "model/Calendar.h"
#include "model/HistorySource.h"
#include "store/HistoryStore.h"

#include <memory>

namespace brindle {

/// The recorded history as the pages read it. Errors are SQLiteError.
class StoredHistory final : public HistorySource {
public:
    explicit StoredHistory(std::shared_ptr<HistoryStore> store, Calendar calendar = Calendar::current(),
                           Clock now = systemNow, int days = keptDays);

    [[nodiscard]] std::future<HistorySnapshot> snapshot() override;
    [[nodiscard]] std::future<std::vector<FileChange>> dayChanges(LocalDay day, LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FolderSummary>> periodContributors(LocalDay first, LocalDay last,
                                                                             LocationScope scope,
                                                                             std::size_t limit) override;
    [[nodiscard]] std::future<std::vector<FileChange>> periodEstimates(LocalDay first, LocalDay last,
                                                                       LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FileChange>> allEstimates(LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<FileChange>> periodChanges(LocalDay first, LocalDay last,
                                                                     LocationScope scope) override;
    [[nodiscard]] std::future<std::vector<VolumeReading>> capacitySamples(std::string volumeID,
                                                                          LocalDay first,
                                                                          LocalDay last) override;
    [[nodiscard]] std::future<ChangeCount> countChanges(LocalDay first, LocalDay last, LocationScope scope,
                                                        ChangeSource kind) override;
    void streamChanges(LocalDay first, LocalDay last, const LocationScope& scope, ChangeSource kind,
                       const ChangeSink& sink) override;

private:
    std::shared_ptr<HistoryStore> store_;
    Calendar calendar_;
    Clock now_;
    int days_;
};

}  // namespace brindle
