#pragma once

#include "model/Calendar.h"
#include "model/UnixTime.h"
#include "store/HistoryExamination.h"

#include <optional>
#include <string>
#include <vector>

namespace brindle {

/// One point of a look at Brindle's health.
struct HealthPoint {
    std::string name;     // for programs: "database", "lock", "space", …
    std::string finding;  // a sentence
    std::string advice;   // a sentence that says what to do; empty when nothing is to be done

    [[nodiscard]] bool isWell() const { return advice.empty(); }
};

/// How checks come about without being asked for.
struct AutomaticChecks {
    bool isWindowOpen = false;
    bool opensAtLogin = false;      // the window
    bool isServiceEnabled = false;  // of the user's systemd: the checks' service or timer
    bool isPaused = false;
};

struct HealthQuestion {
    std::string dataDirectory;
    std::string settingsFile;
    AutomaticChecks automatic;
    UnixTime now = 0;
};

/// Looks at the database, at who uses it, the room on its disk, who may read its files, the locations, the
/// checks and what was left behind, in this order. Writes nothing, also not where it could.
[[nodiscard]] std::vector<HealthPoint> examineHealth(const HealthQuestion& question,
                                                     const Calendar& calendar);

/// What is found of the database, in a sentence; it names the command that mends a damaged one.
[[nodiscard]] HealthPoint databasePoint(const HistoryExamination& examination, const std::string& directory);

}  // namespace brindle
