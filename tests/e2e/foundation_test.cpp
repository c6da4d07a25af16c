// The host's view of the engine: entry points, the analysis driver's codes,
// its log lines and the publication of the result list and file.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "APICheckEngine/EngineConfig.h"
#include "support/EngineHost.h"

namespace {

const char* kDatabase = "<APIAnalysisDB><G><Function>GetModel</Function></G></APIAnalysisDB>";

// True when `wanted` occur in `texts` in this order (other lines may come between).
::testing::AssertionResult InOrder(const std::vector<std::string>& texts, const std::vector<std::string>& wanted) {
  size_t next = 0;
  for (const std::string& text : texts) {
    if (next < wanted.size() && text.rfind(wanted[next], 0) == 0) ++next;
  }
  if (next == wanted.size()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "missing or out of order: \"" << wanted[next] << "\"";
}

class Foundation : public ::testing::Test {
 protected:
  EngineHost host;
};

TEST_F(Foundation, EmptyFileListRunsEveryStageAndPublishesAnEmptyResult) {
  DatabaseFile database(kDatabase);
  WriteFile(EngineConfig::kResultPath, "stale finding\n");
  EngineHost::Run run = host.analyse({});
  EXPECT_EQ(run.code, RUN_SUCCESS);
  EXPECT_TRUE(run.results.empty());
  EXPECT_EQ(run.resultFile, "");  // rewritten, not left as it was
  EXPECT_TRUE(InOrder(run.logTexts(),
                      {"Engine Version [140808_QX_1.30] ", "[APIAnalysis] [sec:usec] : ", "Time [Init]:",
                       "Time [FirstScanSource]:", "Time [Prepare]:", "Time [GetDeviceAPIsFromSWFMain]:",
                       "Time [AfterFindObjectTagToken]:", "Time [AfterFindAPIFunctionName4JS]:", "Time [Finished]:",
                       " outPutFileFullPath [/tmp/AnalysisResult]", "[~APIAnalysis] ",
                       "[~APIAnalysis] [sec:nsec] : ",
                       "[DeviceAPI]==============================================================",
                       "### All Symbol Table data is Successfully deleted!! ###"}));
  EXPECT_FALSE(run.logged("[0][StartAnalysis] returnCode [1000] "));  // only failures log a return code
}

TEST_F(Foundation, DatabaseFailuresStopTheRunAndStillRewriteTheResultFile) {
  struct Case {
    const char* name;
    bool missing;
    const char* content;
    RunResult code;
  };
  const Case cases[] = {
      {"missing database", true, "", RUN_DB_LOAD_FAILED},
      {"database without its root element", false, "<Other><G><Function>X</Function></G></Other>", RUN_DB_NO_ROOT},
  };
  for (const Case& c : cases) {
    DatabaseFile database = c.missing ? DatabaseFile::Missing() : DatabaseFile(c.content);
    WriteFile(EngineConfig::kResultPath, "stale finding\n");
    EngineHost::Run run = host.analyse({"/nonexistent/index.html"});
    const std::string code = std::to_string(c.code);
    EXPECT_EQ(run.code, c.code) << c.name;
    EXPECT_TRUE(run.results.empty()) << c.name;
    EXPECT_EQ(run.resultFile, "") << c.name;
    EXPECT_TRUE(InOrder(run.logTexts(), {" loadDeviceAPIInfo Error [" + code + "] ", "Time [Init]:",
                                         "[StartAnalysis] Init-returnCode [" + code + "] ",
                                         " outPutFileFullPath [/tmp/AnalysisResult]",
                                         "[0][StartAnalysis] returnCode [" + code + "] "}))
        << c.name;
    EXPECT_FALSE(run.logged("Time [Prepare]:")) << c.name;
  }
}

TEST_F(Foundation, LogLinesCarryTheCallingMemberAndTheFormatText) {
  DatabaseFile missing = DatabaseFile::Missing();
  EngineHost::Run run = host.analyse({});
  std::vector<std::pair<std::string, std::string>> seen;
  for (const LogLine& line : run.log) seen.emplace_back(line.function, line.format);
  auto has = [&](const char* function, const char* format) {
    return std::find(seen.begin(), seen.end(), std::make_pair(std::string(function), std::string(format))) !=
           seen.end();
  };
  EXPECT_TRUE(has("APIAnalysis", "Engine Version [%s] "));
  EXPECT_TRUE(has("Init", " loadDeviceAPIInfo Error [%d] "));
  EXPECT_TRUE(has("PrintProcessingTime", "Time [%s]:%ld:%ld "));
  EXPECT_TRUE(has("StartAnalysis", "[%s] Init-returnCode [%d] "));
  EXPECT_TRUE(has("StartAnalysis", " outPutFileFullPath [%s]"));
  EXPECT_TRUE(has("StartAnalysis", "[%d][%s] returnCode [%d] "));
  EXPECT_TRUE(has("~APIAnalysis", "[%s] [sec:nsec] : %ld:%ld "));
}

TEST_F(Foundation, ResultVectorLifecycleAsHostsUseIt) {
  // A second create abandons the first list; the host still owns nothing.
  std::vector<std::string>* first = host.createResultVector();
  std::vector<std::string>* second = host.createResultVector();
  EXPECT_NE(first, second);
  EXPECT_EQ(*host.resultVector, second);
  delete first;  // abandoned by the engine; released here to keep the leak checker quiet
  host.destoryResultVector();
  EXPECT_EQ(*host.resultVector, second);  // the stale pointer stays

  *host.resultVector = nullptr;  // as before any createResultVector
  host.destoryResultVector();   // does nothing
  host.destoryInstance(nullptr);  // does nothing
}

TEST_F(Foundation, EachEngineRestartsTheTimeBudget) {
  IAppAnalysis* engine = host.createInstance();
  const uint32_t start = *host.firstTimeVal;
  EXPECT_EQ(start, static_cast<uint32_t>(host.firstCheckTime->tv_nsec / 1000 + 1000000u * host.firstCheckTime->tv_sec));
  host.destoryInstance(engine);
  usleep(2000);
  engine = host.createInstance();
  EXPECT_NE(*host.firstTimeVal, start);
  host.destoryInstance(engine);
}

TEST_F(Foundation, HostsFindExactlyTheDocumentedNames) {
  for (const char* name : {"createInstance", "destoryInstance", "createResultVector", "destoryResultVector",
                           "g_SWFResultVector", "firstCheckTime", "firstTimeVal", "trex_compile", "trex_free",
                           "trex_match", "trex_search", "trex_searchrange", "trex_getsubexpcount", "trex_getsubexp",
                           "g_exp", "g_limitAddress", "delete_comment", "delete_blankline", "documentExtention",
                           "SystemFunctionPool", "word", "word4CapitalSWF", "arNames", "arPreFlags", "arSupFlags"}) {
    EXPECT_NO_THROW(host.symbol(name)) << name;
  }
}

}  // namespace
