// Verdicts: the method name read from a call text, the finding line, and the
// order in which Finish judges the queued calls.
#include "web/ScannerFixture.h"

namespace {

class VerdictsTest : public ScannerFixture {
 protected:
  RunResult judge(const char* expression, const std::string& path = "/tmp/0/app/www/main.js", int line = 3) {
    Record* call = record(expression, "Src", path);
    call->line = line;
    engine.foundCallList.push_back(call);
    return engine.DetermineAPISecurity(engine.resultList, call);
  }
  std::string finding(const char* expression, const std::string& path = "/tmp/0/app/www/main.js", int line = 3) {
    drop(engine.resultList);
    EXPECT_EQ(judge(expression, path, line), RUN_UNDOCUMENTED_API);
    return results().empty() ? "<none>" : results()[0];
  }
};

TEST_F(VerdictsTest, MethodNameAndFindingLine) {
  const std::string tail = " used\n";
  const struct {
    const char* expression;
    const char* path;
    int line;
    std::string finding;
  } cases[] = {
      {"C#obj.getInfo (x)", "/tmp/0/app/www/main.js", 3, "../main.js(3) : UndocumentedAPI 'getInfo'"},
      {"C#a.b.c(1)", "/tmp/0/app/www/main.js", 3, "../main.js(3) : UndocumentedAPI 'c'"},  // leftmost .name(
      {"C#getInfo", "/tmp/0/app/www/main.js", 3, "../main.js(3) : UndocumentedAPI 'getInfo'"},
      {"C#x(1)", "/tmp/0/app/www/main.js", 3, "../main.js(3) : UndocumentedAPI 'x1)'"},           // whole text, cleaned
      {"C#obj.\tget (", "/tmp/0/app/www/main.js", 3, "../main.js(3) : UndocumentedAPI '\tget'"},  // tab stays
      {"C#a.b.c(1)#more", "/tmp/0/app/www/main.js", 3, "../main.js(3) : UndocumentedAPI 'c'"},
      {"C#i.getSerial()", "/tmp/1234/app/www/js/main.js", 57, "../js/main.js(57) : UndocumentedAPI 'getSerial'"},
      {"C#i.getSerial()", "/tmp/0/app/www/", 4, "../(4) : UndocumentedAPI 'getSerial'"},
      {"C#i.getSerial()", "a/b/c/d/e/f.js", -1, "../e/f.js(-1) : UndocumentedAPI 'getSerial'"},
      {"C#i.getSerial()", "//tmp//0/app/www/x.js", 2, "../x.js(2) : UndocumentedAPI 'getSerial'"},
  };
  for (const auto& c : cases) EXPECT_EQ(finding(c.expression, c.path, c.line), c.finding + tail) << c.expression;
}

TEST_F(VerdictsTest, NothingToJudgeWithoutACallText) {
  // With an empty database every call is undocumented: only a missing call
  // text gives 1000.
  for (const char* expression : {static_cast<const char*>(nullptr), "MORVANE-NAVERTIX-KOB", "C#", "#", ""}) {
    EXPECT_EQ(judge(expression), RUN_SUCCESS) << (expression ? expression : "null");
  }
  EXPECT_EQ(engine.DetermineAPISecurity(engine.resultList, nullptr), RUN_SUCCESS);
  EXPECT_TRUE(results().empty());
}

TEST_F(VerdictsTest, NamesAreComparedWholeAndCaseSensitively) {
  document({"GetModel", "SetChannel", " GetSerial"});
  EXPECT_EQ(judge("C#tv.GetModel()"), RUN_SUCCESS);
  EXPECT_EQ(judge("C#tv.SetChannel (4)"), RUN_SUCCESS);
  for (const char* other : {"C#tv.getmodel()", "C#tv.GetModelName()", "C#tv.Get()", "C#tv.GetSerial()"}) {
    EXPECT_EQ(judge(other), RUN_UNDOCUMENTED_API) << other;
  }
}

TEST_F(VerdictsTest, EachFindingIsStoredOnceInFirstFoundOrder) {
  EXPECT_EQ(judge("C#tv.B()", "/tmp/0/a/b/x.js", 2), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#tv.A()", "/tmp/0/a/b/x.js", 1), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#tv .B ( )", "/tmp/0/a/b/x.js", 2), RUN_UNDOCUMENTED_API);  // same line again
  EXPECT_EQ(judge("C#tv.B()", "/tmp/0/a/b/x.js", 9), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(results(), (std::vector<std::string>{"../x.js(2) : UndocumentedAPI 'B' used\n",
                                                 "../x.js(1) : UndocumentedAPI 'A' used\n",
                                                 "../x.js(9) : UndocumentedAPI 'B' used\n"}));
}

TEST_F(VerdictsTest, FinishStopsAtTheFirstUndocumentedCall) {
  EXPECT_EQ(engine.Finish(engine.resultList), RUN_SUCCESS);  // nothing queued
  document({"GetModel"});
  for (const char* expression :
       {"C#tv.GetModel()", static_cast<const char*>(nullptr), "C#tv.First()", "C#x.Second()"}) {
    engine.foundCallList.push_back(record(expression, "Src", "/tmp/0/app/www/app.js"));
  }
  EXPECT_EQ(engine.Finish(engine.resultList), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(results(), std::vector<std::string>{"../app.js(0) : UndocumentedAPI 'First' used\n"});
}

}  // namespace
