// Making and releasing the entries of the engine's lists: owned strings,
// records with their owned expression, function blocks with their owned body.
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

// A record that owns `expression` (null for a call that is not judged).
inline SWFStateMentInfo* NewRecord(std::string* expression, const std::string& scope, const std::string& path,
                                   int32_t line = 0) {
  SWFStateMentInfo* record = new SWFStateMentInfo;
  record->expression = expression;
  record->scope = scope;
  record->filePath = path;
  record->line = line;
  return record;
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
