// Construction and destruction of the engine object, its time budget and its
// processing-time checkpoints.
#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/EngineConfig.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/RecordLists.h"
#include "APICheckEngine/TimeBudget.h"

namespace FlashEngine_1_00 {

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

  ReleaseStrings(whiteAPIList);
  ReleaseStrings(resultList);
  // worthfulSourceList holds the same texts as cleanedSourceList.
  ReleaseStrings(cleanedSourceList);
  worthfulSourceList.clear();
  ReleaseStrings(worthfulPathList);
  ReleaseStrings(worthfulExtList);

  ReleaseFunctionBlocks(functionBlockList);
  for (auto* list : {&objectTagList, &objectClassList, &objectIdList, &declareList, &embedsDeclareList,
                     &objectVariableList}) {
    ReleaseRecords(*list);
  }

  ENGINE_LOG("~APIAnalysis", "[DeviceAPI]==============================================================");

  for (auto* list : {&foundCallList, &swfCallList, &spareCallList, &objectAccessList, &embedsAccessList}) {
    ReleaseRecords(*list);
  }

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
