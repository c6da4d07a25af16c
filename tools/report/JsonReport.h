// The JSON form of an analysis report (documented in docs/json-format.md).
#pragma once

#include <nlohmann/json.hpp>

#include "report/AnalysisReport.h"

nlohmann::ordered_json ToJson(const AnalysisReport& report);
// The report a ToJson object describes; throws nlohmann::json::exception on
// anything else.
AnalysisReport FromJson(const nlohmann::ordered_json& json);
