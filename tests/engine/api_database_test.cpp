#include <gtest/gtest.h>

#include "APICheckEngine/APIAnalysis.h"
#include "support/EngineHost.h"
#include "support/LogCapture.h"

using FlashEngine_1_00::APIAnalysis;

namespace {

std::vector<std::string> load(const std::string& content, RunResult* code) {
  DatabaseFile database(content);
  APIAnalysis engine;
  std::vector<std::string*> list;
  *code = engine.swfloadWhiteAPIInfo(list);
  std::vector<std::string> names;
  for (std::string* name : list) {
    names.push_back(*name);
    delete name;
  }
  return names;
}

struct DatabaseCase {
  const char* name;
  std::string content;
  RunResult code;
  std::vector<std::string> names;
};

TEST(ApiDatabase, ReadsFunctionElementsOfEachGroupInDocumentOrder) {
  const DatabaseCase cases[] = {
      {"empty file", "", RUN_SUCCESS, {}},
      {"two groups, duplicates kept",
       "<APIAnalysisDB><A><Function>Get</Function><Function>Set</Function></A>"
       "<B><Function>Get</Function></B></APIAnalysisDB>",
       RUN_SUCCESS,
       {"Get", "Set", "Get"}},
      {"CR LF line ends", "<APIAnalysisDB>\r\n<A>\r\n<Function>Get</Function>\r\n</A>\r\n</APIAnalysisDB>\r\n",
       RUN_SUCCESS, {"Get"}},
      {"lone CR line ends", "<APIAnalysisDB>\r<A>\r<Function>Get</Function>\r</A>\r</APIAnalysisDB>\r", RUN_SUCCESS,
       {"Get"}},
      {"Function directly under the root is not read",
       "<APIAnalysisDB><Function>Root</Function><A><Function>Inner</Function></A></APIAnalysisDB>", RUN_SUCCESS,
       {"Inner"}},
      {"a group named Function is a group",
       "<APIAnalysisDB><Function>Own<Function>Child</Function></Function></APIAnalysisDB>", RUN_SUCCESS,
       {"Child"}},
      {"other names, empty entries and deeper levels are skipped",
       "<APIAnalysisDB><A><Method>No</Method><Function/><Function>Yes</Function>"
       "<Sub><Function>Deep</Function></Sub><function>Lower</function></A></APIAnalysisDB>",
       RUN_SUCCESS,
       {"Yes"}},
      {"blanks inside a name are kept", "<APIAnalysisDB><A><Function>Get Model</Function></A></APIAnalysisDB>",
       RUN_SUCCESS, {"Get Model"}},
      {"only the first root counts",
       "<APIAnalysisDB><A><Function>One</Function></A></APIAnalysisDB>"
       "<APIAnalysisDB><A><Function>Two</Function></A></APIAnalysisDB>",
       RUN_SUCCESS,
       {"One"}},
      {"no APIAnalysisDB root", "<Other><A><Function>Get</Function></A></Other>", RUN_DB_NO_ROOT, {}},
      {"root name is case-sensitive", "<apianalysisdb><A><Function>Get</Function></A></apianalysisdb>",
       RUN_DB_NO_ROOT, {}},
      {"not XML at all", "just some text", RUN_DB_NO_ROOT, {}},
  };
  for (const DatabaseCase& c : cases) {
    RunResult code = 0;
    EXPECT_EQ(load(c.content, &code), c.names) << c.name;
    EXPECT_EQ(code, c.code) << c.name;
  }
}

TEST(ApiDatabase, MissingFileIsALoadFailure) {
  DatabaseFile missing = DatabaseFile::Missing();
  APIAnalysis engine;
  std::vector<std::string*> list;
  EXPECT_EQ(engine.swfloadWhiteAPIInfo(list), RUN_DB_LOAD_FAILED);
  EXPECT_TRUE(list.empty());
}

TEST(ApiDatabase, InitReloadsTheListAndLogsFailures) {
  APIAnalysis engine;
  {
    DatabaseFile database("<APIAnalysisDB><A><Function>Get</Function><Function>Set</Function></A></APIAnalysisDB>");
    engine.resultList.push_back(new std::string("old finding\n"));
    engine.worthfulPathList.push_back(new std::string("/kept/path.js"));
    EXPECT_EQ(engine.Init(), RUN_SUCCESS);
    EXPECT_EQ(engine.Init(), RUN_SUCCESS);  // a second run does not double the list
    ASSERT_EQ(engine.whiteAPIList.size(), 2u);
    EXPECT_EQ(*engine.whiteAPIList[1], "Set");
    EXPECT_TRUE(engine.resultList.empty());
    EXPECT_EQ(engine.worthfulPathList.size(), 1u);  // paths of the first run survive
  }
  DatabaseFile missing = DatabaseFile::Missing();
  LogCapture::clear();
  EXPECT_EQ(engine.Init(), RUN_DB_LOAD_FAILED);
  EXPECT_TRUE(engine.whiteAPIList.empty());
  ASSERT_EQ(LogCapture::lines().size(), 2u);
  EXPECT_EQ(LogCapture::lines()[0].text, " loadDeviceAPIInfo Error [1010] ");
  EXPECT_EQ(LogCapture::lines()[0].function, "Init");
  EXPECT_EQ(LogCapture::lines()[1].text.rfind("Time [Init]:", 0), 0u);
}

}  // namespace
