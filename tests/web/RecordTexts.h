// Reading engine lists back as text in tests.
#pragma once

#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"

// The expression text of every record of a list, in order.
inline std::vector<std::string> expressionsOf(const std::vector<FlashEngine_1_00::SWFStateMentInfo*>& list) {
  std::vector<std::string> out;
  for (const auto* record : list) out.push_back(record->expression ? *record->expression : "<null>");
  return out;
}
