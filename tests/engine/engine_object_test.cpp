#include <gtest/gtest.h>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/TimeBudget.h"
#include "support/LogCapture.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::FlashFunctionInfo;
using FlashEngine_1_00::SWFStateMentInfo;

namespace {

TEST(EngineObject, ConstructionLogsVersionThenClockAndStartsTheBudget) {
  LogCapture::clear();
  APIAnalysis engine;
  ASSERT_EQ(LogCapture::lines().size(), 2u);
  EXPECT_EQ(LogCapture::lines()[0].function, "APIAnalysis");
  EXPECT_EQ(LogCapture::lines()[0].text, "Engine Version [140808_QX_1.30] ");
  // The label says usec; the value is the nanosecond field.
  EXPECT_EQ(LogCapture::lines()[1].text, "[APIAnalysis] [sec:usec] : " + std::to_string(firstCheckTime.tv_sec) + ":" +
                                             std::to_string(firstCheckTime.tv_nsec) + " ");
  EXPECT_EQ(firstTimeVal, TimeBudget::microsOf(firstCheckTime));
  EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_SUCCESS);
  firstTimeVal = TimeBudget::nowMicros() - 25000000u;
  EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_TIME_LIMIT);
}

TEST(EngineObject, DestructionLogsInOrderAndReleasesEveryList) {
  APIAnalysis* engine = new APIAnalysis();
  // One entry of each kind, so that the leak checker sees every release.
  std::string* shared = new std::string("text");
  engine->cleanedSourceList.push_back(shared);
  engine->worthfulSourceList.push_back(shared);  // released once, with list 6
  engine->worthfulPathList.push_back(new std::string("/p"));
  for (auto* list : {&engine->objectTagList, &engine->foundCallList, &engine->swfCallList}) {
    list->push_back(new SWFStateMentInfo());
    list->back()->expression = new std::string("C#x");
  }
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

}  // namespace
