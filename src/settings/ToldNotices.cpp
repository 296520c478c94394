#include "settings/ToldNotices.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace brindle {

ToldNotices::ToldNotices(const std::string& text) {
    const auto told = nlohmann::json::parse(text, nullptr, false);
    if (!told.is_object()) return;
    for (const auto& [subject, day] : told.items())
        if (const auto known = day.is_string() ? LocalDay::parse(day.get<std::string>()) : std::nullopt)
            days_[subject] = *known;
}

std::string ToldNotices::text() const {
    auto told = nlohmann::json::object();
    for (const auto& [subject, day] : days_) told[subject] = day.text();
    return told.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

bool ToldNotices::hasAnyOn(const LocalDay& day) const {
    return std::ranges::any_of(days_, [&](const auto& told) { return told.second == day; });
}

std::optional<LocalDay> ToldNotices::lastDay(const std::string& subject, const LocalDay& today) const {
    const auto told = days_.find(subject);
    return told == days_.end() || told->second > today ? std::nullopt : std::optional(told->second);
}

void ToldNotices::add(const std::string& subject, const LocalDay& today, const LocalDay& firstKept) {
    std::erase_if(days_, [&](const auto& told) { return told.second < firstKept || told.second > today; });
    days_[subject] = today;
}

}  // namespace brindle
