// Verdicts: the method name read from a call text, the finding line, and the
// order in which Finish judges the queued calls.
#include <tuple>

#include "web/ScannerFixture.h"

namespace {

class VerdictsTest : public ScannerFixture {
 protected:
  RunResult judge(const char* expression, int line = 3, const std::string& path = "/tmp/0/app/www/main.js") {
    Record* call = record(expression, "Src", path);
    call->line = line;
    engine.foundCallList.push_back(call);
    return engine.DetermineAPISecurity(engine.resultList, call);
  }
};

TEST_F(VerdictsTest, MethodNameAndFindingLine) {
  const std::tuple<const char*, int, const char*, const char*> cases[] = {
      {"C#obj.getInfo (x)", 1, "/tmp/0/app/www/main.js", "../main.js(1) : UndocumentedAPI 'getInfo' used\n"},
      {"C#a.b.c(1)#more", 2, "/tmp/0/app/www/main.js", "../main.js(2) : UndocumentedAPI 'c' used\n"},  // leftmost
      {"C#getInfo", 3, "/tmp/0/app/www/main.js", "../main.js(3) : UndocumentedAPI 'getInfo' used\n"},
      {"C#x(1)", 4, "/tmp/0/app/www/main.js", "../main.js(4) : UndocumentedAPI 'x1)' used\n"},  // whole text, cleaned
      {"C#obj.\tget (", 5, "/tmp/0/app/www/main.js", "../main.js(5) : UndocumentedAPI '\tget' used\n"},  // tab stays
      {"C#i.getSerial()", 57, "/tmp/1234/app/www/js/main.js", "../js/main.js(57) : UndocumentedAPI 'getSerial' used\n"},
      {"C#i.getSerial()", 4, "/tmp/0/app/www/", "../(4) : UndocumentedAPI 'getSerial' used\n"},
      {"C#i.getSerial()", -1, "//tmp//0/app/www/x.js", "../x.js(-1) : UndocumentedAPI 'getSerial' used\n"},
  };
  Texts expected;
  for (const auto& [expression, line, path, finding] : cases) {
    EXPECT_EQ(judge(expression, line, path), RUN_UNDOCUMENTED_API) << expression;
    expected.push_back(finding);
  }
  EXPECT_EQ(results(), expected);
}

TEST_F(VerdictsTest, OnlyACallTextIsJudgedWholeAndCaseSensitively) {
  // A missing call text (a null expression among them) is documented even
  // with an empty database.
  for (const char* nothing : {static_cast<const char*>(nullptr), "MORVANE-NAVERTIX-KOB", "C#", "#", ""}) {
    EXPECT_EQ(judge(nothing), RUN_SUCCESS) << (nothing ? nothing : "null");
  }
  EXPECT_TRUE(results().empty());
  document({"GetModel", "SetChannel", " GetSerial"});
  for (const char* documented : {"C#tv.GetModel()", "C#tv.SetChannel (4)"}) EXPECT_EQ(judge(documented), RUN_SUCCESS);
  for (const char* other : {"C#tv.getmodel()", "C#tv.GetModelName()", "C#tv.Get()", "C#tv.GetSerial()"}) {
    EXPECT_EQ(judge(other), RUN_UNDOCUMENTED_API) << other;
  }
}

TEST_F(VerdictsTest, EachFindingIsStoredOnceAndStill1001) {
  for (const char* call : {"C#tv.B()", "C#tv.A()", "C#tv .B ( )"}) EXPECT_EQ(judge(call), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(results(),
            (Texts{"../main.js(3) : UndocumentedAPI 'B' used\n", "../main.js(3) : UndocumentedAPI 'A' used\n"}));
}

TEST_F(VerdictsTest, FinishStopsAtTheFirstUndocumentedCall) {
  document({"GetModel"});
  for (const char* call : {"C#tv.GetModel()", static_cast<const char*>(nullptr), "C#tv.First()", "C#x.Second()"}) {
    engine.foundCallList.push_back(record(call, "Src", "/tmp/0/app/www/app.js"));
  }
  EXPECT_EQ(engine.Finish(engine.resultList), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(results(), Texts{"../app.js(0) : UndocumentedAPI 'First' used\n"});
}

}  // namespace
