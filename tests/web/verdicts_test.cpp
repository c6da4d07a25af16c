// Verdicts: the method name read from a call text, the finding line, and the
// order in which Finish judges the queued calls.
#include "web/ScannerFixture.h"

namespace {

class VerdictsTest : public ScannerFixture {
 protected:
  RunResult judge(const char* expression, const std::string& path = "/tmp/0/app/www/js/main.js", int line = 7) {
    Record* call = record(expression, "Src", path);
    call->line = line;
    engine.foundCallList.push_back(call);
    return engine.DetermineAPISecurity(engine.resultList, call);
  }
};

struct MethodCase {
  const char* expression;
  const char* method;
};

TEST_F(VerdictsTest, ReadsTheMethodNameFromTheCallText) {
  const MethodCase cases[] = {
      {"C#obj.getInfo (x)", "getInfo"},
      {"C#a.b.c(1)", "c"},             // leftmost dot-name-paren is the one before c
      {"C#getInfo", "getInfo"},        // no call pattern: the whole text
      {"C#x(1)", "x1)"},               // whole text cleaned of dots, blanks and '('
      {"C#a. b (", "b"},               // blanks around the name removed
      {"C#obj.\tget(", "\tget"},       // only blanks are removed, a tab stays
      {"C#a.b.c(1)#more#parts", "c"},  // parts after the call text play no part
      {"C#(tv.SetChannel(3,\"x\")", "SetChannel"},
  };
  for (const MethodCase& c : cases) {
    drop(engine.resultList);
    EXPECT_EQ(judge(c.expression, "/tmp/0/app/www/main.js", 3), RUN_UNDOCUMENTED_API) << c.expression;
    ASSERT_EQ(results().size(), 1u) << c.expression;
    EXPECT_EQ(results()[0], std::string("../main.js(3) : UndocumentedAPI '") + c.method + "' used\n");
  }
}

TEST_F(VerdictsTest, NothingToJudgeWithoutACallText) {
  // Every call counts as undocumented with an empty database, so only the
  // missing call text can give 1000 here.
  for (const char* expression : {static_cast<const char*>(nullptr), "MORVANE-NAVERTIX-KOB", "C#", "#", ""}) {
    EXPECT_EQ(judge(expression), RUN_SUCCESS) << (expression ? expression : "null");
  }
  EXPECT_EQ(engine.DetermineAPISecurity(engine.resultList, nullptr), RUN_SUCCESS);
  EXPECT_TRUE(results().empty());
}

TEST_F(VerdictsTest, FindingLineNamesThePathBelowItsFourthComponent) {
  const struct {
    const char* path;
    int line;
    const char* finding;
  } cases[] = {
      {"/tmp/1234/app/www/js/main.js", 57, "../js/main.js(57) : UndocumentedAPI 'getSerial' used\n"},
      {"/tmp/0/app/www/index.html", 1, "../index.html(1) : UndocumentedAPI 'getSerial' used\n"},
      {"/tmp/0/app/www", 4, "../(4) : UndocumentedAPI 'getSerial' used\n"},
      {"/tmp/0/app/www/", 4, "../(4) : UndocumentedAPI 'getSerial' used\n"},
      {"main.js", 0, "../(0) : UndocumentedAPI 'getSerial' used\n"},
      {"a/b/c/d/e/f.js", -1, "../e/f.js(-1) : UndocumentedAPI 'getSerial' used\n"},
      {"//tmp//0/app/www/x.js", 2, "../x.js(2) : UndocumentedAPI 'getSerial' used\n"},
  };
  for (const auto& c : cases) {
    drop(engine.resultList);
    EXPECT_EQ(judge("MORVANE-NAVERTIX-SYSINFO#info.getSerial()", c.path, c.line), RUN_UNDOCUMENTED_API);
    ASSERT_EQ(results().size(), 1u);
    EXPECT_EQ(results()[0], c.finding) << c.path;
  }
}

TEST_F(VerdictsTest, NamesAreComparedWholeAndCaseSensitively) {
  document({"GetModel", "SetChannel", " GetSerial"});
  EXPECT_EQ(judge("C#tv.GetModel()"), RUN_SUCCESS);
  EXPECT_EQ(judge("C#tv.SetChannel (4)"), RUN_SUCCESS);
  EXPECT_EQ(judge("C#tv.getmodel()"), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#tv.GetModelName()"), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#tv.Get()"), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#tv.GetSerial()"), RUN_UNDOCUMENTED_API);  // the entry keeps its blank
  EXPECT_EQ(results().size(), 4u);
}

TEST_F(VerdictsTest, EachFindingIsStoredOnceInFirstFoundOrder) {
  EXPECT_EQ(judge("C#tv.B()", "/tmp/0/a/b/x.js", 2), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#tv.A()", "/tmp/0/a/b/x.js", 1), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#tv .B ( )", "/tmp/0/a/b/x.js", 2), RUN_UNDOCUMENTED_API);  // same line again
  EXPECT_EQ(judge("C#tv.B()", "/tmp/0/a/b/x.js", 9), RUN_UNDOCUMENTED_API);     // other line: new finding
  EXPECT_EQ(results(), (std::vector<std::string>{"../x.js(2) : UndocumentedAPI 'B' used\n",
                                                 "../x.js(1) : UndocumentedAPI 'A' used\n",
                                                 "../x.js(9) : UndocumentedAPI 'B' used\n"}));
}

TEST_F(VerdictsTest, CheckerTakesCopiesAndSaysUndocumentedForAnEmptyList) {
  bool undocumented = false;
  EXPECT_EQ(engine.undocumentAPICheckerMain({}, "GetModel", undocumented), RUN_SUCCESS);
  EXPECT_TRUE(undocumented);
  std::string entry = "GetModel";
  EXPECT_EQ(engine.undocumentAPICheckerMain({&entry}, "GetModel", undocumented), RUN_SUCCESS);
  EXPECT_FALSE(undocumented);
  EXPECT_EQ(engine.undocumentAPICheckerMain({&entry}, "", undocumented), RUN_SUCCESS);
  EXPECT_TRUE(undocumented);
}

TEST_F(VerdictsTest, FinishStopsAtTheFirstUndocumentedCall) {
  EXPECT_EQ(engine.Finish(engine.resultList), RUN_SUCCESS);  // nothing queued

  document({"GetModel"});
  for (const char* expression :
       {"C#tv.GetModel()", static_cast<const char*>(nullptr), "C#tv.First()", "C#tv.Second()"}) {
    Record* call = record(expression, "Src", "/tmp/0/app/www/app.js");
    call->line = 5;
    engine.foundCallList.push_back(call);
  }
  EXPECT_EQ(engine.Finish(engine.resultList), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(results(), std::vector<std::string>{"../app.js(5) : UndocumentedAPI 'First' used\n"});

  // Judging again finds the same call first and adds nothing.
  EXPECT_EQ(engine.Finish(engine.resultList), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(results().size(), 1u);
}

}  // namespace
