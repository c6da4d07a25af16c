// Releasing the contents of the engine's lists: owned strings, records with
// their owned expression, function blocks with their owned body.
#pragma once

#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

// Deletes every string, from the back, and empties the list.
inline void ReleaseStrings(std::vector<std::string*>& list) {
  while (!list.empty()) {
    delete list.back();
    list.pop_back();
  }
}

inline void ReleaseRecords(std::vector<SWFStateMentInfo*>& list) {
  for (SWFStateMentInfo* record : list) {
    delete record->expression;
    delete record;
  }
  list.clear();
}

inline void ReleaseFunctionBlocks(std::vector<FlashFunctionInfo*>& list) {
  for (FlashFunctionInfo* block : list) {
    delete block->body;
    delete block;
  }
  list.clear();
}

}  // namespace FlashEngine_1_00
