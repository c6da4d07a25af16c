#include <gtest/gtest.h>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/TimeBudget.h"
#include "support/LogCapture.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::FlashFunctionInfo;
using FlashEngine_1_00::SWFStateMentInfo;

namespace {

std::vector<std::string> functionsOf(const std::vector<LogLine>& lines) {
  std::vector<std::string> out;
  for (const LogLine& line : lines) out.push_back(line.function);
  return out;
}

TEST(EngineObject, ConstructionLogsVersionThenClockAndStartsTheBudget) {
  LogCapture::clear();
  struct timespec before;
  clock_gettime(CLOCK_MONOTONIC, &before);
  APIAnalysis* engine = new APIAnalysis();
  ASSERT_EQ(LogCapture::formats(), (std::vector<std::string>{"Engine Version [%s] ", "[%s] [sec:usec] : %ld:%ld "}));
  EXPECT_EQ(LogCapture::lines()[0].text, "Engine Version [140808_QX_1.30] ");
  EXPECT_EQ(functionsOf(LogCapture::lines()), (std::vector<std::string>{"APIAnalysis", "APIAnalysis"}));
  // The label says usec; the value is the nanosecond field.
  EXPECT_EQ(LogCapture::lines()[1].text, "[APIAnalysis] [sec:usec] : " + std::to_string(firstCheckTime.tv_sec) + ":" +
                                             std::to_string(firstCheckTime.tv_nsec) + " ");
  EXPECT_EQ(firstTimeVal, TimeBudget::microsOf(firstCheckTime));
  EXPECT_GE(firstCheckTime.tv_sec, before.tv_sec);
  EXPECT_EQ(engine->extractionCounter, 0);
  delete engine;
}

TEST(EngineObject, DestructionLogsInOrderAndReleasesEveryList) {
  APIAnalysis* engine = new APIAnalysis();
  // Populate every kind of list so that ASan/LSan see the releases.
  engine->whiteAPIList.push_back(new std::string("GetModel"));
  engine->resultList.push_back(new std::string("line\n"));
  std::string* shared = new std::string("text");
  engine->cleanedSourceList.push_back(shared);
  engine->worthfulSourceList.push_back(shared);
  engine->worthfulPathList.push_back(new std::string("/p"));
  engine->worthfulExtList.push_back(new std::string("js"));
  for (auto* list : {&engine->objectTagList, &engine->objectIdList, &engine->foundCallList, &engine->swfCallList,
                     &engine->embedsAccessList}) {
    SWFStateMentInfo* record = new SWFStateMentInfo();
    record->expression = new std::string("C#x");
    list->push_back(record);
  }
  engine->swfCallList.push_back(new SWFStateMentInfo());  // a record without a name
  engine->functionBlockList.push_back(new FlashFunctionInfo{"function f()", new std::string("{}"), "/p"});

  LogCapture::clear();
  delete engine;
  EXPECT_EQ(LogCapture::formats(),
            (std::vector<std::string>{"[%s] ", "[%s] [sec:nsec] : %ld:%ld ",
                                      "[DeviceAPI]==============================================================",
                                      "### All Symbol Table data is Successfully deleted!! ###"}));
  EXPECT_EQ(LogCapture::lines()[0].text, "[~APIAnalysis] ");
  for (const LogLine& line : LogCapture::lines()) EXPECT_EQ(line.function, "~APIAnalysis");
}

TEST(EngineObject, TimeBudgetIsTwentySecondsFromConstruction) {
  APIAnalysis engine;
  EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_SUCCESS);
  const uint32_t saved = firstTimeVal;
  firstTimeVal = TimeBudget::nowMicros() - 25000000u;
  EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_TIME_LIMIT);
  firstTimeVal = TimeBudget::nowMicros() - 15000000u;
  EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_SUCCESS);
  firstTimeVal = saved;
}

TEST(EngineObject, CheckpointLogsNameAndMonotonicTime) {
  APIAnalysis engine;
  LogCapture::clear();
  engine.PrintProcessingTime("Prepare");
  ASSERT_EQ(LogCapture::lines().size(), 1u);
  EXPECT_EQ(LogCapture::lines()[0].format, "Time [%s]:%ld:%ld ");
  EXPECT_EQ(LogCapture::lines()[0].function, "PrintProcessingTime");
  EXPECT_EQ(LogCapture::lines()[0].text.rfind("Time [Prepare]:", 0), 0u);
}

}  // namespace
