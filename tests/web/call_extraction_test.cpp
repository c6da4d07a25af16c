// Script API call extraction: calls on bound variables, the extension
// framework's Execute calls, calls through element look-ups, and the table of
// built-in functions.
#include "web/ScannerFixture.h"

namespace {

const char kPath[] = "/tmp/0/app/www/js/app.js";

class CallExtractionTest : public ScannerFixture {
 protected:
  // Every call found in `source` on `name`, all documented so that none stops
  // the search.
  std::vector<std::string> callsOn(const char* name, const std::string& source, const char* classId = "C") {
    drop(engine.foundCallList);
    document({"GetModel", "SetChannel", "A", "B", "Start", "'Play'", "ExecuteCommand"});
    std::string text = source;
    EXPECT_EQ(engine.findAPIsFromPool(classId, name, &text, kPath), RUN_SUCCESS);
    return expressions(engine.foundCallList);
  }
  void bind(const char* key, const char* scope, const std::string& path, const std::string& text = "") {
    engine.objectVariableList.push_back(record(key, scope, path, text));
  }
};

TEST_F(CallExtractionTest, CallsOnAName) {
  using Calls = std::vector<std::string>;
  EXPECT_EQ(callsOn("tv", "x = tv.GetModel();"), Calls{"C#tv.GetModel()"});
  EXPECT_EQ(callsOn("tv", "x = mytv.GetModel(); x=tv.GetModel();"), Calls{});  // '=' is no separator
  EXPECT_EQ(callsOn("tv", "f(tv.SetChannel(3, \"a\"));"), Calls{"C#(tv.SetChannel(3,\"a\")"});
  EXPECT_EQ(callsOn("tv", ";tv.A();tv . B ( )"), (Calls{"C#;tv.A()", "C#;tv.B()"}));
  EXPECT_EQ(callsOn("tv", " tv.Get({a: 1})"), Calls{});                   // not a plain argument list
  EXPECT_EQ(callsOn("tv", " tv.A() tv.B(1)"), Calls{"C#tv.A()tv.B(1)"});  // ')' is an argument byte
  EXPECT_EQ(callsOn("t v", " tv.A()"), Calls{"C#tv.A()"});                // blanks of the name removed
  EXPECT_EQ(callsOn("tv(", " tv(.A()"), Calls{});                         // pattern does not compile
  EXPECT_EQ(callsOn("obj", " obj.Execute( \"Start\" )", "MORVANE-NAVERTIX-KOB"), Calls{"MORVANE-NAVERTIX-KOB#Start"});
  EXPECT_EQ(callsOn("obj", " obj.Execute('Play')"), Calls{"C#'Play'"});
  EXPECT_EQ(callsOn("obj", " obj.ExecuteCommand(1)"), Calls{"C#obj.ExecuteCommand(1)"});  // names nothing
  EXPECT_EQ(callsOn("tv", " tv.Open(1) tv.OpenAll()"), (Calls{"<null>", "<null>"}));
  EXPECT_TRUE(engine.resultList.empty());
}

TEST_F(CallExtractionTest, CallsCarryTheLineOfTheirFirstOccurrenceAndStopAtAFinding) {
  addSource(kPath, "var tv;\ninit();\n tv.A();\n tv.B();\n tv.A();\n");
  document({"A"});
  EXPECT_EQ(engine.findAPIsFromPool("C", "tv", engine.worthfulSourceList[0], kPath), RUN_UNDOCUMENTED_API);
  ASSERT_EQ(engine.foundCallList.size(), 2u);
  EXPECT_EQ(engine.foundCallList[0]->line, 3);
  EXPECT_EQ(engine.foundCallList[0]->scope, "Src");
  EXPECT_EQ(results(), std::vector<std::string>{"../js/app.js(4) : UndocumentedAPI 'B' used\n"});
}

TEST_F(CallExtractionTest, ExecuteNameCleaning) {
  const struct {
    const char* call;
    const char* name;
  } cases[] = {{"Execute('Play')", "'Play'"},
               {"x.Execute(\n\"Stop\")", "Stop"},
               {"Execute(Name)", "Name"},
               {"Execute(\"Two Words\")", "TwoWords"},
               {"obj.Run()", ""},
               {"Execute (\"A\")", ""}};
  for (const auto& c : cases) {
    std::string call = c.call;
    EXPECT_EQ(engine.findAPINameForKOBCase(&call), c.name) << c.call;
  }
}

TEST_F(CallExtractionTest, BindingsSearchTheirBodyOrFileAndAllAreSearched) {
  addSource(kPath, "var a;\n\n this.tv.Bad1();\n");
  addSource("/tmp/0/app/www/js/b.js", "\n x.Bad3();\n");
  bind("C#this.tv", "Src", kPath);
  bind("C#x", "Func", kPath, " x.Bad2();");  // the body, not the file
  bind("C#x", "Src", "/tmp/0/app/www/js/b.js");
  bind("C#x", "Src", "/tmp/0/app/www/js/none.js");       // not a file worth scanning
  bind("C#x", "Global", "/tmp/0/app/www/js/b.js");       // neither kind
  bind("C#y", "Func", "/elsewhere/y.js", " y.Bad4();");  // file not scanned: line -1
  EXPECT_EQ(engine.FindAPIFunctionName4JS(), RUN_SUCCESS);
  EXPECT_EQ(results(), (std::vector<std::string>{"../js/app.js(3) : UndocumentedAPI 'Bad1' used\n",
                                                 "../js/app.js(0) : UndocumentedAPI 'Bad2' used\n",
                                                 "../js/b.js(1) : UndocumentedAPI 'Bad3' used\n",  // leading line feed
                                                 "../(-1) : UndocumentedAPI 'Bad4' used\n"}));
}

TEST_F(CallExtractionTest, VariablesHoldingCommonHelpersAreSkipped) {
  const struct {
    std::string body;
    bool skipped;
  } cases[] = {
      {" tv = new Common.API.Plugin();\n tv.Bad();", true},
      {" tv.Bad(); var k = tv || Common.API.TVKeyValue;", true},  // any occurrence counts
      {" tv=Common.API.Widget; tv.Bad();", true},
      {" tv = 1;" + std::string(60, ' ') + "Common.API.Plugin;\n tv.Bad();", false},  // beyond 50 bytes
      {" tv = new Common.Api.Plugin(); tv.Bad();", false},
  };
  for (const auto& c : cases) {
    drop(engine.objectVariableList);
    drop(engine.foundCallList);
    bind("C#tv", "Func", kPath, c.body);
    engine.FindAPIFunctionName4JS();
    EXPECT_EQ(engine.foundCallList.empty(), c.skipped) << c.body;
  }
}

TEST_F(CallExtractionTest, LookUpCallsAreJudgedThroughADummyObject) {
  const std::string b = "/tmp/0/app/www/b.js";
  const std::string c = "/tmp/0/app/www/c.js";
  addSource(kPath, "var a;\nvar b;\n$(\"tv\").Bad();\n$( 'tv' ) . GetModel ( );");
  addSource(b, " $(\"tv\").toString(); $('tv').GetModel(); $(\"tv\").GetAdd(1); $(\"tv\").Execute(\"Start\");");
  addSource(c, " t=$(\"tv\");\n $(\"tv\").Bad();\n");
  document({"GetModel"});
  // The extension framework's class and Execute calls name nothing here; an
  // element part made of a whole look-up (its "$" an end anchor) matches nothing.
  const std::pair<const char*, std::string> records[] = {
      {"C#tv", b}, {"MORVANE-NAVERTIX-KOB#tv", kPath}, {"C#t=$(\"tv\")", c}, {"C#tv", kPath}};
  for (const auto& r : records) engine.declareList.push_back(record(r.first, "Global", r.second, "", "$(\"tv\")"));
  EXPECT_EQ(engine.FindAPIFunctionName4JSSpe(), RUN_UNDOCUMENTED_API);
  // toString( and GetAdd( (holding "Add(") name built-ins.
  EXPECT_EQ(expressions(engine.foundCallList),
            (std::vector<std::string>{"C#DummyObject.GetModel(", "C#", "MORVANE-NAVERTIX-KOB#", "MORVANE-NAVERTIX-KOB#",
                                      "C#DummyObject.Bad("}));
  EXPECT_EQ(results(), std::vector<std::string>{"../js/app.js(3) : UndocumentedAPI 'Bad' used\n"});
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
                   {212, "insertCell."},
                   {267, "open(document)"},
                   {403, "marquee.start"},
                   {434, "toString"},
                   {446, "write(document)"},
                   {450, "document.writeln"}};
  for (const auto& p : positions) EXPECT_STREQ(SystemFunctionPool[p.index], p.name) << p.index;
}

}  // namespace
