// Script API call extraction: calls on bound variables, the extension
// framework's Execute calls, calls through element look-ups, and the table of
// built-in functions.
#include <cstring>

#include "web/ScannerFixture.h"

namespace {

const char kPath[] = "/tmp/0/app/www/js/app.js";
const char kKob[] = "MORVANE-NAVERTIX-KOB";

class CallExtractionTest : public ScannerFixture {
 protected:
  // Every call found in `source` on `name`, all documented so that none stops
  // the search.
  std::vector<std::string> callsOn(const char* name, const std::string& source, const char* classId = "C") {
    document({"GetModel", "SetChannel", "A", "B", "Start", "'Play'", "ExecuteCommand", "Get"});
    std::string text = source;
    EXPECT_EQ(engine.findAPIsFromPool(classId, name, &text, kPath), RUN_SUCCESS);
    return expressions(engine.foundCallList);
  }
};

TEST_F(CallExtractionTest, CallsOnANameNeedASeparatorBeforeIt) {
  const struct {
    const char* name;
    const char* source;
    std::vector<std::string> calls;
  } cases[] = {
      {"tv", "x = tv.GetModel();", {"C#tv.GetModel()"}},
      {"tv", "x = mytv.GetModel(); x=tv.GetModel();", {}},
      {"tv", "f(tv.SetChannel(3, \"a\"));", {"C#(tv.SetChannel(3,\"a\")"}},
      {"tv", ";tv.A();tv . B ( )", {"C#;tv.A()", "C#;tv.B()"}},
      {"tv", "\ttv.A(x[1], 'y/z')", {"C#\ttv.A(x[1],'y/z')"}},
      {"tv", " tv.Get({a: 1})", {}},                   // a brace is not part of a plain argument list
      {"tv", " tv.A() tv.B(1)", {"C#tv.A()tv.B(1)"}},  // ')' is an argument byte: one text spans both
      {"t v", " tv.A()", {"C#tv.A()"}},                // blanks of the name are removed first
      {"this.tv", " this.tv.B()", {"C#this.tv.B()"}},
      {"tv(", " tv(.A()", {}},  // a name that does not compile finds nothing
  };
  for (const auto& c : cases) {
    drop(engine.foundCallList);
    EXPECT_EQ(callsOn(c.name, c.source), c.calls) << c.source;
  }
}

TEST_F(CallExtractionTest, ExecuteCallsAreNamedByTheirArgumentAndOpenCallsCarryNoText) {
  EXPECT_EQ(callsOn("obj", " obj.Execute( \"Start\" )", kKob), std::vector<std::string>{"MORVANE-NAVERTIX-KOB#Start"});
  drop(engine.foundCallList);
  EXPECT_EQ(callsOn("obj", " obj.Execute('Play')"), std::vector<std::string>{"C#'Play'"});
  drop(engine.foundCallList);
  // "Execute" without its own parenthesis names nothing: the plain call text is judged.
  EXPECT_EQ(callsOn("obj", " obj.ExecuteCommand(1)"), std::vector<std::string>{"C#obj.ExecuteCommand(1)"});
  drop(engine.foundCallList);
  EXPECT_EQ(callsOn("tv", " tv.Open(1) tv.Open()"), (std::vector<std::string>{"<null>", "<null>"}));
  EXPECT_TRUE(engine.resultList.empty());
}

TEST_F(CallExtractionTest, CallsCarryPathKindAndTheLineOfTheirFirstOccurrence) {
  addSource(kPath, "var tv;\ninit();\n tv.A();\n tv.B();\n tv.A();\n");
  std::string* source = engine.worthfulSourceList[0];
  document({"A"});
  EXPECT_EQ(engine.findAPIsFromPool("C", "tv", source, kPath), RUN_UNDOCUMENTED_API);
  ASSERT_EQ(engine.foundCallList.size(), 2u);  // the search stops at the undocumented call
  EXPECT_EQ(engine.foundCallList[0]->line, 3);
  EXPECT_EQ(engine.foundCallList[0]->scope, "Src");
  EXPECT_EQ(engine.foundCallList[0]->filePath, kPath);
  EXPECT_EQ(results(), std::vector<std::string>{"../js/app.js(4) : UndocumentedAPI 'B' used\n"});
}

TEST_F(CallExtractionTest, ExecuteNameCleaning) {
  const struct {
    const char* call;
    const char* name;
  } cases[] = {
      {"obj.Execute( \"Start\" )", "Start"},
      {"Execute('Play')", "'Play'"},
      {"x.Execute(\n\"Stop\")", "Stop"},
      {"Execute(Name)", "Name"},
      {"Execute(\"Two Words\")", "TwoWords"},
      {"obj.Run()", ""},
      {"Execute (\"A\")", ""},
  };
  for (const auto& c : cases) {
    std::string call = c.call;
    EXPECT_EQ(engine.findAPINameForKOBCase(&call), c.name) << c.call;
  }
}

class BoundVariableTest : public CallExtractionTest {
 protected:
  void bind(const char* key, const char* scope, const std::string& path, const std::string& text = "") {
    engine.objectVariableList.push_back(record(key, scope, path, text));
  }
};

TEST_F(BoundVariableTest, SearchesFunctionBodiesAndWholeFilesAndGoesOnAfterAFinding) {
  addSource(kPath, "var a;\n\n this.tv.Bad1();\n");
  addSource("/tmp/0/app/www/js/b.js", "\n x.Bad3();\n");
  bind("C#this.tv", "Src", kPath);
  bind("C#x", "Func", kPath, " x.Bad2();");  // the body, not the file
  bind("C#x", "Src", "/tmp/0/app/www/js/b.js");
  bind("C#x", "Src", "/tmp/0/app/www/js/none.js");       // not a file worth scanning
  bind("C#x", "Global", "/tmp/0/app/www/js/b.js");       // neither kind
  bind("C#y", "Func", "/elsewhere/y.js", " y.Bad4();");  // its file is not scanned: line -1
  EXPECT_EQ(engine.FindAPIFunctionName4JS(), RUN_SUCCESS);
  EXPECT_EQ(results(), (std::vector<std::string>{"../js/app.js(3) : UndocumentedAPI 'Bad1' used\n",
                                                 "../js/app.js(0) : UndocumentedAPI 'Bad2' used\n",
                                                 "../js/b.js(1) : UndocumentedAPI 'Bad3' used\n",  // leading line feed
                                                 "../(-1) : UndocumentedAPI 'Bad4' used\n"}));
}

TEST_F(BoundVariableTest, VariablesHoldingCommonHelpersAreSkipped) {
  const std::string helperFar = " tv = 1;" + std::string(60, ' ') + "Common.API.Plugin;\n tv.Bad();";
  const struct {
    std::string body;
    bool skipped;
  } cases[] = {
      {" tv = new Common.API.Plugin();\n tv.Bad();", true},
      {" tv=Common.API.Widget; tv.Bad();", true},
      {" tv.Bad(); var k = tv || Common.API.TVKeyValue;", true},  // any occurrence counts
      {helperFar, false},
      {" tv = new Common.API.Plugins(); tv.Bad();", true},
      {" tv = new Common.Api.Plugin(); tv.Bad();", false},
  };
  for (const auto& c : cases) {
    drop(engine.objectVariableList);
    drop(engine.foundCallList);
    drop(engine.resultList);
    bind("C#tv", "Func", kPath, c.body);
    engine.FindAPIFunctionName4JS();
    EXPECT_EQ(engine.foundCallList.empty(), c.skipped) << c.body;
  }
}

class LookUpCallTest : public CallExtractionTest {
 protected:
  RunResult run(const char* expression, const std::string& source, const std::string& path = kPath,
                const std::string& access = "$(\"tv\")") {
    addSource(path, source);
    engine.declareList.push_back(record(expression, "Global", path, "", access));
    return engine.FindAPIFunctionName4JSSpe();
  }
};

TEST_F(LookUpCallTest, MethodCalledOnALookUpIsJudgedThroughADummyObject) {
  EXPECT_EQ(run("C#tv", "var a;\nvar b;\n$(\"tv\").Bad();\n$( 'tv' ) . GetModel ( );"), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(expressions(engine.foundCallList), std::vector<std::string>{"C#DummyObject.Bad("});
  // The line is that of the record's look-up text.
  EXPECT_EQ(results(), std::vector<std::string>{"../js/app.js(3) : UndocumentedAPI 'Bad' used\n"});
}

TEST_F(LookUpCallTest, BuiltInsAreDroppedAndDocumentedCallsPass) {
  document({"GetModel", "addClass"});
  EXPECT_EQ(run("C#tv", " $(\"tv\").toString(); $('tv').GetModel(); $(\"tv\").addClass('x'); $(\"tv\").GetAdd(1);"),
            RUN_SUCCESS);
  // toString( is a built-in; GetAdd( holds the built-in "Add(".
  EXPECT_EQ(expressions(engine.foundCallList),
            (std::vector<std::string>{"C#DummyObject.GetModel(", "C#DummyObject.addClass("}));
}

TEST_F(LookUpCallTest, ExtensionFrameworkAndExecuteCallsNameNothingHere) {
  EXPECT_EQ(run("MORVANE-NAVERTIX-KOB#tv", " $(\"tv\").Undocumented();"), RUN_SUCCESS);
  EXPECT_EQ(run("C#tv", " $(\"tv\").Execute(\"Start\");", "/tmp/0/app/www/b.js"), RUN_SUCCESS);
  // Each run walks every record again: the first one is judged twice.
  EXPECT_EQ(expressions(engine.foundCallList),
            (std::vector<std::string>{"MORVANE-NAVERTIX-KOB#", "MORVANE-NAVERTIX-KOB#", "C#"}));
  EXPECT_TRUE(engine.resultList.empty());
}

TEST_F(LookUpCallTest, AWholeAccessExpressionAsElementPartMatchesNoRealCall) {
  // The element part is the look-up as the source wrote it: its "$" anchors
  // the end and its parentheses group, so nothing in real code matches.
  EXPECT_EQ(run("C#t=$(\"tv\")", " t=$(\"tv\");\n $(\"tv\").Bad();\n t.Bad();"), RUN_SUCCESS);
  EXPECT_EQ(run("C#document.getElementById(\"tv\")", " document.getElementById(\"tv\").Bad();", "/tmp/0/app/www/b.js"),
            RUN_SUCCESS);
  EXPECT_TRUE(engine.foundCallList.empty());
}

TEST(SystemFunctionPoolTable, HoldsTheBuiltInNamesInTheirOrder) {
  ASSERT_EQ(sizeof(SystemFunctionPool) / sizeof(SystemFunctionPool[0]), 451u);
  const struct {
    size_t index;
    const char* name;
  } positions[] = {{0, "AboutBox"},
                   {5, "Add"},
                   {6, "Add"},
                   {7, "add"},
                   {54, "clearRequest."},
                   {62, "command Identifiers"},
                   {164, "getElementById"},
                   {212, "insertCell."},
                   {267, "open(document)"},
                   {403, "marquee.start"},
                   {434, "toString"},
                   {446, "write(document)"},
                   {450, "document.writeln"}};
  for (const auto& p : positions) EXPECT_STREQ(SystemFunctionPool[p.index], p.name) << p.index;
  for (const char* name : SystemFunctionPool) ASSERT_NE(name, nullptr);
}

}  // namespace
