// Plug-in calls found in decompiled statements, with the engine's lists
// filled directly.
#include <gtest/gtest.h>

#include <memory>

#include "APICheckEngine/APIAnalysis.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::SWFStateMentInfo;
using Lines = std::vector<std::string>;

namespace {

const char* const kPath = "/tmp/0/app/www/movie.swf";

SWFStateMentInfo* keyRecord(const std::string& key) {
  SWFStateMentInfo* record = new SWFStateMentInfo();
  record->expression = new std::string(key);
  return record;
}

// An engine with the declared objects, the bound variables and the
// documented API names given.
std::unique_ptr<APIAnalysis> engineWith(const Lines& declared, const Lines& bound, const Lines& documented) {
  std::unique_ptr<APIAnalysis> engine(new APIAnalysis());
  for (const auto& key : declared) engine->objectIdList.push_back(keyRecord(key));
  for (const auto& key : bound) engine->objectVariableList.push_back(keyRecord(key));
  for (const auto& name : documented) engine->whiteAPIList.push_back(new std::string(name));
  return engine;
}

TEST(SwfExtraction, NamesOfCallsOnTheDeclaredObject) {
  const std::string tv = "MORVANE-NAVERTIX-TV#myExt";
  const std::string kob = "MORVANE-NAVERTIX-KOB#kob";
  const struct {
    const char* statement;
    std::string declared;
    Lines names;  // of the records made, "<null>" for a record without a name
  } cases[] = {
      {"getObj(myExt).GetVersion(1)", tv, {"MORVANE-NAVERTIX-TV#DummyObject.GetVersion(1("}},
      {"f('myExt') . Play()", tv, {"MORVANE-NAVERTIX-TV#DummyObject. Play(("}},
      {"getObj(other).Play()", tv, {}},
      {"getObj(myExt).a.toString()", tv, {}},
      {"getObj(myExt).getDate2()", tv, {"MORVANE-NAVERTIX-TV#DummyObject.getDate2(("}},
      {"getObj(myExt).a.Open()", tv, {"<null>"}},
      {"getObj(myExt).a.Open.Execute('Start')", tv, {"MORVANE-NAVERTIX-TV#'Start'"}},
      {"getObj(kob).Execute(\"Play\")", kob, {"MORVANE-NAVERTIX-KOB#Play"}},
      {"getObj(kob).a.Open()", kob, {"MORVANE-NAVERTIX-KOB#"}},
      {"f().Play()", "no-separator", {"#DummyObject.Play(("}},
  };
  for (const auto& c : cases) {
    auto engine = engineWith({c.declared}, {}, {"GetVersion", "Play", "'Start'", "getDate2"});
    EXPECT_EQ(engine->FindAPIFunctionName4SWF({c.statement}, kPath), RUN_SUCCESS);
    EXPECT_TRUE(engine->resultList.empty());
    Lines names;
    for (const SWFStateMentInfo* r : engine->swfCallList) {
      names.push_back(r->expression ? *r->expression : "<null>");
      EXPECT_TRUE(r->scope == "Global" && r->filePath == kPath && r->line == 0) << c.statement;
    }
    EXPECT_EQ(names, c.names) << c.statement;
  }
}

TEST(SwfExtraction, FirstUndocumentedCallEndsTheSearch) {
  auto engine = engineWith({"MORVANE-NAVERTIX-TV#tv"}, {"MORVANE-NAVERTIX-TV#tv"}, {"Play"});
  EXPECT_EQ(engine->FindAPIFunctionName4SWF(
                {"g(tv).Play()", "g(tv).GetSerial()", "g(tv).GetModel()", "trace(tv.GetModel())"}, kPath),
            RUN_UNDOCUMENTED_API);
  EXPECT_EQ(engine->resultList.size(), 1u);
  EXPECT_EQ(*engine->resultList.at(0), "../movie.swf(0) : UndocumentedAPI 'GetSerial' used\n");
  EXPECT_EQ(engine->swfCallList.size(), 2u);
  EXPECT_TRUE(engine->foundCallList.empty());  // the bound-variable search did not run
}

TEST(SwfExtraction, OnlyTheFirstDeclaredObjectIsMatched) {
  // Calls on the second object are found by the bound-variable search only,
  // which needs a separator byte before the name in the joined statements.
  auto engine = engineWith({"MORVANE-NAVERTIX-TV#first", "MORVANE-NAVERTIX-AUDIO#second"},
                           {"MORVANE-NAVERTIX-AUDIO#second"}, {});
  EXPECT_EQ(engine->FindAPIFunctionName4SWF({"g(second).Mute()", "trace(second.SetVolume(3))"}, kPath), RUN_SUCCESS);
  EXPECT_TRUE(engine->swfCallList.empty());
  EXPECT_EQ(engine->foundCallList.size(), 1u);
  ASSERT_EQ(engine->resultList.size(), 1u);
  EXPECT_NE(engine->resultList[0]->find(") : UndocumentedAPI 'SetVolume' used\n"), std::string::npos);
  // Without declared objects only the bound variables are searched.
  engine = engineWith({}, {"MORVANE-NAVERTIX-TV#tv"}, {});
  EXPECT_EQ(engine->FindAPIFunctionName4SWF({"g(tv).Play()"}, kPath), RUN_SUCCESS);
  EXPECT_TRUE(engine->swfCallList.empty() && engine->resultList.empty());
}

}  // namespace
