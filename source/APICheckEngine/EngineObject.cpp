// Construction and destruction of the engine object, its time budget and its
// processing-time checkpoints.
#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/EngineConfig.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/TimeBudget.h"

namespace FlashEngine_1_00 {

namespace {

template <typename List>
void deleteFromBack(List& list) {
  while (!list.empty()) {
    delete list.back();
    list.pop_back();
  }
}

void deleteRecords(std::vector<SWFStateMentInfo*>& list) {
  for (SWFStateMentInfo* record : list) {
    delete record->expression;
    delete record;
  }
  list.clear();
}

}  // namespace

APIAnalysis::APIAnalysis() : extractionCounter(0) {
  ENGINE_LOG("APIAnalysis", "Engine Version [%s] ", EngineConfig::kEngineVersion);
  clock_gettime(CLOCK_MONOTONIC, &firstCheckTime);
  ENGINE_LOG("APIAnalysis", "[%s] [sec:usec] : %ld:%ld ", "APIAnalysis", static_cast<long>(firstCheckTime.tv_sec),
             static_cast<long>(firstCheckTime.tv_nsec));
  firstTimeVal = TimeBudget::microsOf(firstCheckTime);
}

APIAnalysis::~APIAnalysis() {
  ENGINE_LOG("~APIAnalysis", "[%s] ", "~APIAnalysis");
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  ENGINE_LOG("~APIAnalysis", "[%s] [sec:nsec] : %ld:%ld ", "~APIAnalysis", static_cast<long>(now.tv_sec),
             static_cast<long>(now.tv_nsec));

  deleteFromBack(whiteAPIList);
  deleteFromBack(resultList);
  // worthfulSourceList holds the same texts as cleanedSourceList.
  deleteFromBack(cleanedSourceList);
  worthfulSourceList.clear();
  deleteFromBack(worthfulPathList);
  deleteFromBack(worthfulExtList);

  for (FlashFunctionInfo* block : functionBlockList) {
    delete block->body;
    delete block;
  }
  functionBlockList.clear();
  deleteRecords(objectTagList);
  deleteRecords(objectClassList);
  deleteRecords(objectIdList);
  deleteRecords(declareList);
  deleteRecords(embedsDeclareList);
  deleteRecords(objectVariableList);

  ENGINE_LOG("~APIAnalysis", "[DeviceAPI]==============================================================");

  deleteRecords(foundCallList);
  deleteRecords(swfCallList);
  deleteRecords(spareCallList);
  deleteRecords(objectAccessList);
  deleteRecords(embedsAccessList);

  ENGINE_LOG("~APIAnalysis", "### All Symbol Table data is Successfully deleted!! ###");
}

RunResult APIAnalysis::LimitProcessingTimeNResource() {
  return TimeBudget::exceeded(TimeBudget::nowMicros(), firstTimeVal) ? RUN_TIME_LIMIT : RUN_SUCCESS;
}

void APIAnalysis::PrintProcessingTime(std::string name) {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  ENGINE_LOG("PrintProcessingTime", "Time [%s]:%ld:%ld ", name.c_str(), static_cast<long>(now.tv_sec),
             static_cast<long>(now.tv_nsec));
}

}  // namespace FlashEngine_1_00
