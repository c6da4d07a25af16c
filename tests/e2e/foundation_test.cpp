// The host's view of the engine: entry points, the analysis driver's codes,
// its log lines and the publication of the result list and file.
#include <gtest/gtest.h>

#include "APICheckEngine/EngineConfig.h"
#include "support/EngineHost.h"

namespace {

// True when lines starting with each of `wanted` occur in this order, each
// from the given member (other lines may come between).
::testing::AssertionResult InOrder(const EngineHost::Run& run,
                                   const std::vector<std::pair<std::string, std::string>>& wanted) {
  size_t next = 0;
  for (const LogLine& line : run.log) {
    if (next < wanted.size() && line.function == wanted[next].first && line.text.rfind(wanted[next].second, 0) == 0) {
      ++next;
    }
  }
  if (next == wanted.size()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "missing or out of order: " << wanted[next].first << " \""
                                       << wanted[next].second << "\"";
}

class Foundation : public ::testing::Test {
 protected:
  EngineHost host;
};

TEST_F(Foundation, EmptyFileListRunsEveryStageAndPublishesAnEmptyResult) {
  DatabaseFile database("<APIAnalysisDB><G><Function>GetModel</Function></G></APIAnalysisDB>");
  WriteFile(EngineConfig::kResultPath, "stale finding\n");
  EngineHost::Run run = host.analyse({});
  EXPECT_EQ(run.code, RUN_SUCCESS);
  EXPECT_TRUE(run.results.empty());
  EXPECT_EQ(run.resultFile, "");  // rewritten, not left as it was
  const std::string timing = "PrintProcessingTime";
  EXPECT_TRUE(InOrder(run, {{timing, "Time [Init]:"},
                            {timing, "Time [FirstScanSource]:"},
                            {timing, "Time [Prepare]:"},
                            {timing, "Time [GetDeviceAPIsFromSWFMain]:"},
                            {timing, "Time [AfterFindObjectTagToken]:"},
                            {timing, "Time [AfterFindAPIFunctionName4JS]:"},
                            {timing, "Time [Finished]:"},
                            {"StartAnalysis", " outPutFileFullPath [/tmp/AnalysisResult]"},
                            {"~APIAnalysis", "[~APIAnalysis] "}}));
  EXPECT_FALSE(run.logged("[0][StartAnalysis] returnCode [1000] "));  // only failures log a return code
}

TEST_F(Foundation, DatabaseFailuresStopTheRunAndStillRewriteTheResultFile) {
  for (bool missing : {true, false}) {
    DatabaseFile database = missing ? DatabaseFile::Missing() : DatabaseFile("<Other><G/></Other>");
    const std::string code = missing ? "1010" : "1012";
    WriteFile(EngineConfig::kResultPath, "stale finding\n");
    EngineHost::Run run = host.analyse({"/nonexistent/index.html"});
    EXPECT_EQ(std::to_string(run.code), code);
    EXPECT_TRUE(run.results.empty());
    EXPECT_EQ(run.resultFile, "");
    EXPECT_TRUE(InOrder(run, {{"Init", " loadDeviceAPIInfo Error [" + code + "] "},
                              {"PrintProcessingTime", "Time [Init]:"},
                              {"StartAnalysis", "[StartAnalysis] Init-returnCode [" + code + "] "},
                              {"StartAnalysis", " outPutFileFullPath [/tmp/AnalysisResult]"},
                              {"StartAnalysis", "[0][StartAnalysis] returnCode [" + code + "] "}}))
        << code;
    EXPECT_FALSE(run.logged("Time [Prepare]:")) << code;
  }
}

TEST_F(Foundation, ResultVectorLifecycleAsHostsUseIt) {
  std::vector<std::string>* first = host.createResultVector();
  std::vector<std::string>* second = host.createResultVector();
  EXPECT_EQ(*host.resultVector, second);  // a second create abandons the first list
  delete first;                           // released here to keep the leak checker quiet
  host.destoryResultVector();
  EXPECT_EQ(*host.resultVector, second);  // the stale pointer stays
  *host.resultVector = nullptr;           // as before any createResultVector:
  host.destoryResultVector();             // does nothing
  host.destoryInstance(nullptr);          // does nothing
}

TEST_F(Foundation, HostsFindTheDocumentedNames) {
  for (const char* name : {"createInstance", "destoryInstance", "createResultVector", "destoryResultVector",
                           "g_SWFResultVector", "firstCheckTime", "firstTimeVal", "trex_compile", "trex_free",
                           "trex_match", "trex_search", "trex_searchrange", "trex_getsubexpcount", "trex_getsubexp",
                           "g_exp", "g_limitAddress", "delete_comment", "delete_blankline", "documentExtention",
                           "SystemFunctionPool", "word", "word4CapitalSWF", "arNames", "arPreFlags", "arSupFlags"}) {
    EXPECT_NO_THROW(host.symbol(name)) << name;
  }
}

}  // namespace
