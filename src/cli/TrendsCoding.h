#pragma once

#include "analysis/Forecast.h"
#include "analysis/Reconcile.h"
#include "analysis/Trends.h"

#include <nlohmann/json.hpp>

// How trends are written as JSON. What is not known is null, and never 0.

namespace brindle {

void to_json(nlohmann::ordered_json& json, const RangeFigures& figures);
void to_json(nlohmann::ordered_json& json, const TrendDay& day);
void to_json(nlohmann::ordered_json& json, const ScopeStep& step);
void to_json(nlohmann::ordered_json& json, const Trend& trend);
[[nodiscard]] nlohmann::ordered_json coded(const Forecast& forecast);
[[nodiscard]] nlohmann::ordered_json coded(const Reconciliation& found);

}  // namespace brindle
