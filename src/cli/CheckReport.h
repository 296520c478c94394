#pragma once

#include "checks/Events.h"
#include "cli/Context.h"
#include "cli/ExitCode.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace brindle {

/// Tells what a run found, location by location, as text or as one JSON document at the end.
class CheckReport {
public:
    CheckReport(const Context& context, HistoryStore& store, const CheckRunSummary& summary)
        : context_(context), store_(store), summary_(summary) {}

    /// `last` is the walk's last word on its progress; `isForgotten`: the location is not included any more.
    void add(const LocationRecord& record, const ScanProgress& last, bool isForgotten);

    [[nodiscard]] ExitCode finish();

private:
    void addCommit(const LocationRecord& record, const CheckCommit& commit, const ScanProgress& last);
    void printCommit(const LocationRecord& record, const CheckCommit& commit, const ScanProgress& last,
                     const std::vector<FileChange>& largest, const std::vector<UnreadableFolder>& unreadable);
    /// What the run estimated for the location; null when it made no estimates.
    [[nodiscard]] nlohmann::ordered_json estimatedJson(const LocationID& id) const;
    void printUnreadable(const std::vector<UnreadableFolder>& unreadable);
    void addFailure(const LocationRecord& record, const char* outcome, const std::string& sentence,
                    bool isForgotten);

    const Context& context_;
    HistoryStore& store_;
    const CheckRunSummary& summary_;
    nlohmann::ordered_json locations_ = nlohmann::ordered_json::array();
    bool hasFailure_ = false;
};

}  // namespace brindle
