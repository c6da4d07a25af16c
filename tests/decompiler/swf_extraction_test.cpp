// Plug-in calls found in decompiled statements, with the engine's lists
// filled directly.
#include <gtest/gtest.h>

#include <memory>

#include "APICheckEngine/APIAnalysis.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::SWFStateMentInfo;

namespace {

const char* const kPath = "/tmp/0/app/www/movie.swf";

SWFStateMentInfo* keyRecord(const std::string& key) {
  SWFStateMentInfo* record = new SWFStateMentInfo();
  record->expression = new std::string(key);
  return record;
}

struct Engine {
  std::unique_ptr<APIAnalysis> engine{new APIAnalysis()};
  APIAnalysis* operator->() { return engine.get(); }

  Engine(std::vector<std::string> declared, std::vector<std::string> documented) {
    for (const auto& key : declared) engine->objectIdList.push_back(keyRecord(key));
    for (const auto& name : documented) engine->whiteAPIList.push_back(new std::string(name));
  }
  // The expression of each record made from the statements ("<null>" for none).
  std::vector<std::string> names() const {
    std::vector<std::string> out;
    for (const SWFStateMentInfo* r : engine->swfCallList) out.push_back(r->expression ? *r->expression : "<null>");
    return out;
  }
};

const std::vector<std::string> kEverything{"GetVersion", "Play", "'Start'", "Stop"};

TEST(SwfExtraction, NamesOfCallsOnTheDeclaredObject) {
  struct Case {
    const char* statement;
    const char* declared;
    std::vector<std::string> names;
  };
  const Case cases[] = {
      {"getObj(myExt).GetVersion(1)", "MORVANE-NAVERTIX-TV#myExt", {"MORVANE-NAVERTIX-TV#DummyObject.GetVersion(1("}},
      {"f('myExt') . Play()", "MORVANE-NAVERTIX-TV#myExt", {"MORVANE-NAVERTIX-TV#DummyObject. Play(("}},
      {"getObj(other).Play()", "MORVANE-NAVERTIX-TV#myExt", {}},
      {"getObj(myExt).toString()", "MORVANE-NAVERTIX-TV#myExt", {}},
      {"getObj(myExt).a.Open()", "MORVANE-NAVERTIX-TV#myExt", {"<null>"}},
      {"getObj(myExt).Execute('Start')", "MORVANE-NAVERTIX-TV#myExt", {"MORVANE-NAVERTIX-TV#'Start'"}},
      {"getObj(kob).Execute(\"Play\")", "MORVANE-NAVERTIX-KOB#kob", {"MORVANE-NAVERTIX-KOB#Play"}},
      {"getObj(kob).a.Open()", "MORVANE-NAVERTIX-KOB#kob", {"MORVANE-NAVERTIX-KOB#"}},
      {"f().Play()", "no-separator", {"#DummyObject.Play(("}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.statement);
    Engine e({c.declared}, kEverything);
    EXPECT_EQ(e->FindAPIFunctionName4SWF({c.statement}, kPath), RUN_SUCCESS);
    EXPECT_EQ(e.names(), c.names);
    EXPECT_TRUE(e->foundCallList.empty());
    EXPECT_TRUE(e->resultList.empty());
    for (const SWFStateMentInfo* r : e->swfCallList) {
      EXPECT_EQ(r->scope, "Global");
      EXPECT_EQ(r->filePath, kPath);
      EXPECT_EQ(r->line, 0);
    }
  }
}

TEST(SwfExtraction, FirstUndocumentedCallEndsTheSearch) {
  Engine e({"MORVANE-NAVERTIX-TV#tv"}, {"Play"});
  e->objectVariableList.push_back(keyRecord("MORVANE-NAVERTIX-TV#tv"));
  EXPECT_EQ(e->FindAPIFunctionName4SWF({"g(tv).Play()", "g(tv).GetSerial()", "g(tv).GetModel()",
                                        "trace(tv.GetModel())"},
                                       kPath),
            RUN_UNDOCUMENTED_API);
  ASSERT_EQ(e->resultList.size(), 1u);
  EXPECT_EQ(*e->resultList[0], "../movie.swf(0) : UndocumentedAPI 'GetSerial' used\n");
  EXPECT_EQ(e->swfCallList.size(), 2u);
  EXPECT_TRUE(e->foundCallList.empty());  // the bound-variable search did not run
}

TEST(SwfExtraction, OnlyTheFirstDeclaredObjectIsMatched) {
  // Calls on the second object are found by the bound-variable search only,
  // which needs a separator byte before the name in the joined statements.
  Engine e({"MORVANE-NAVERTIX-TV#first", "MORVANE-NAVERTIX-AUDIO#second"}, {});
  e->objectVariableList.push_back(keyRecord("MORVANE-NAVERTIX-AUDIO#second"));
  EXPECT_EQ(e->FindAPIFunctionName4SWF({"g(second).Mute()", "trace(second.SetVolume(3))"}, kPath), RUN_SUCCESS);
  EXPECT_TRUE(e->swfCallList.empty());
  ASSERT_EQ(e->foundCallList.size(), 1u);
  ASSERT_EQ(e->resultList.size(), 1u);
  // The line number is the bound-variable search's own business.
  EXPECT_EQ(e->resultList[0]->find("../movie.swf("), 0u);
  EXPECT_NE(e->resultList[0]->find(") : UndocumentedAPI 'SetVolume' used\n"), std::string::npos);
}

TEST(SwfExtraction, WithoutDeclaredObjectsOnlyBoundVariablesAreSearched) {
  Engine e({}, {});
  e->objectVariableList.push_back(keyRecord("MORVANE-NAVERTIX-TV#tv"));
  EXPECT_EQ(e->FindAPIFunctionName4SWF({"g(tv).Play()"}, kPath), RUN_SUCCESS);
  EXPECT_TRUE(e->swfCallList.empty());
  EXPECT_TRUE(e->resultList.empty());
  EXPECT_EQ(e->FindAPIFunctionName4SWF({}, kPath), RUN_SUCCESS);
}

}  // namespace
