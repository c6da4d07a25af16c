// SARIF 2.1.0 log of one or more analysis reports: one run of the tool, one
// rule per kind of finding (a call from a web source, a call from a SWF
// file), one result per finding, and each analysis as an invocation whose
// properties carry its inputs, code, verdict and notes.
#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "report/AnalysisReport.h"

nlohmann::ordered_json ToSarif(const std::vector<AnalysisReport>& reports, const std::string& toolVersion);
