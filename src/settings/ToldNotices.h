#pragma once

#include "model/LocalDay.h"

#include <map>
#include <optional>
#include <string>

namespace brindle {

/// Which notices the user got, and on which day last: what no history tells, and what a restart must not
/// forget.
class ToldNotices {
public:
    /// From text(), as it is stored; whatever else the text is, it tells of nothing.
    explicit ToldNotices(const std::string& text = {});
    [[nodiscard]] std::string text() const;

    [[nodiscard]] bool hasAnyOn(const LocalDay& day) const;
    /// The last day through `today`; later ones are those of a clock that was wrong.
    [[nodiscard]] std::optional<LocalDay> lastDay(const std::string& subject, const LocalDay& today) const;

    /// Forgets what was told before `firstKept`.
    void add(const std::string& subject, const LocalDay& today, const LocalDay& firstKept);

private:
    std::map<std::string, LocalDay> days_;  // by subject
};

}  // namespace brindle
