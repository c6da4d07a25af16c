#include <gtest/gtest.h>

#include "APICheckEngine/APIAnalysis.h"
#include "support/EngineHost.h"
#include "support/LogCapture.h"

using FlashEngine_1_00::APIAnalysis;

namespace {

std::string db(const std::string& body) { return "<APIAnalysisDB>" + body + "</APIAnalysisDB>"; }

TEST(ApiDatabase, ReadsFunctionElementsOfEachGroupInDocumentOrder) {
  const struct {
    const char* name;
    std::string content;
    RunResult code;
    std::vector<std::string> names;
  } cases[] = {
      {"empty file", "", RUN_SUCCESS, {}},
      {"groups in order, duplicates kept",
       db("<A><Function>Get</Function><Function>Set</Function></A><B><Function>Get</Function></B>"), RUN_SUCCESS,
       {"Get", "Set", "Get"}},
      {"CR LF line ends", "<APIAnalysisDB>\r\n<A>\r\n<Function>Get</Function>\r\n</A>\r\n</APIAnalysisDB>\r\n",
       RUN_SUCCESS, {"Get"}},
      {"lone CR line ends", "<APIAnalysisDB>\r<A>\r<Function>Get</Function>\r</A>\r</APIAnalysisDB>\r", RUN_SUCCESS,
       {"Get"}},
      {"Function under the root is not read", db("<Function>Root</Function><A><Function>In</Function></A>"),
       RUN_SUCCESS, {"In"}},
      {"a group named Function is a group", db("<Function>Own<Function>Child</Function></Function>"), RUN_SUCCESS,
       {"Child"}},
      {"other names, empty entries, deeper levels",
       db("<A><Method>No</Method><Function/><Function>Yes</Function><S><Function>Deep</Function></S>"
          "<function>Lower</function></A>"),
       RUN_SUCCESS, {"Yes"}},
      {"blanks inside a name are kept", db("<A><Function>Get Model</Function></A>"), RUN_SUCCESS, {"Get Model"}},
      {"no APIAnalysisDB root", "<Other><A><Function>Get</Function></A></Other>", RUN_DB_NO_ROOT, {}},
      {"root name is case-sensitive", "<apianalysisdb><A><Function>G</Function></A></apianalysisdb>",
       RUN_DB_NO_ROOT, {}},
  };
  for (const auto& c : cases) {
    DatabaseFile database(c.content);
    APIAnalysis engine;
    std::vector<std::string*> list;
    EXPECT_EQ(engine.swfloadWhiteAPIInfo(list), c.code) << c.name;
    std::vector<std::string> names;
    for (std::string* name : list) names.push_back(*name), delete name;
    EXPECT_EQ(names, c.names) << c.name;
  }
}

TEST(ApiDatabase, InitReloadsTheListAndLogsFailures) {
  APIAnalysis engine;
  {
    DatabaseFile database(db("<A><Function>Get</Function><Function>Set</Function></A>"));
    engine.resultList.push_back(new std::string("old finding\n"));
    engine.worthfulPathList.push_back(new std::string("/kept/path.js"));
    EXPECT_EQ(engine.Init(), RUN_SUCCESS);
    EXPECT_EQ(engine.Init(), RUN_SUCCESS);  // a second run does not double the list
    EXPECT_EQ(engine.whiteAPIList.size(), 2u);
    EXPECT_TRUE(engine.resultList.empty());
    EXPECT_EQ(engine.worthfulPathList.size(), 1u);  // paths of earlier runs stay
  }
  DatabaseFile missing = DatabaseFile::Missing();
  LogCapture::clear();
  EXPECT_EQ(engine.Init(), RUN_DB_LOAD_FAILED);
  EXPECT_TRUE(engine.whiteAPIList.empty());
  ASSERT_EQ(LogCapture::lines().size(), 2u);
  EXPECT_EQ(LogCapture::lines()[0].function, "Init");
  EXPECT_EQ(LogCapture::lines()[0].text, " loadDeviceAPIInfo Error [1010] ");
  EXPECT_EQ(LogCapture::lines()[1].text.rfind("Time [Init]:", 0), 0u);
}

}  // namespace
