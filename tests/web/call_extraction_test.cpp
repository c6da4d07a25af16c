// Script API call extraction: calls on bound variables, the extension
// framework's Execute calls, and calls through element look-ups.
#include "web/ScannerFixture.h"

namespace {

const char kPath[] = "/tmp/0/app/www/js/app.js";

class CallExtractionTest : public ScannerFixture {
 protected:
  // The calls found in `source` on `name`; the test documents them all so
  // that none stops the search.
  Texts callsOn(const char* name, std::string source, const char* classId = "C") {
    size_t before = engine.foundCallList.size();
    EXPECT_EQ(engine.findAPIsFromPool(classId, name, &source, kPath), RUN_SUCCESS) << source;
    Texts all = expressionsOf(engine.foundCallList);
    return Texts(all.begin() + static_cast<std::ptrdiff_t>(before), all.end());
  }
  void bind(const char* key, const char* scope, const std::string& path, const std::string& text = "") {
    engine.objectVariableList.push_back(record(key, scope, path, text));
  }
};

TEST_F(CallExtractionTest, CallsOnAName) {
  document({"GetModel", "SetChannel", "A", "B", "Start", "'Play'", "ExecuteCommand", "TwoWords"});
  EXPECT_EQ(callsOn("tv", "x = tv.GetModel();"), Texts{"C#tv.GetModel()"});
  EXPECT_EQ(callsOn("tv", "x = mytv.GetModel(); x=tv.GetModel();"), Texts{});  // '=' is no separator
  EXPECT_EQ(callsOn("tv", "f(tv.SetChannel(3, \"a\"));"), Texts{"C#(tv.SetChannel(3,\"a\")"});
  EXPECT_EQ(callsOn("tv", ";tv.A();tv . B ( )"), (Texts{"C#;tv.A()", "C#;tv.B()"}));
  EXPECT_EQ(callsOn("tv", " tv.Get({a: 1})"), Texts{});                   // not a plain argument list
  EXPECT_EQ(callsOn("tv", " tv.A() tv.B(1)"), Texts{"C#tv.A()tv.B(1)"});  // ')' is an argument byte
  EXPECT_EQ(callsOn("t v", " tv.A()"), Texts{"C#tv.A()"});                // blanks of the name removed
  EXPECT_EQ(callsOn("tv(", " tv(.A()"), Texts{});                         // pattern does not compile
  EXPECT_EQ(callsOn("obj", " obj.Execute( \"Start\" )", "MORVANE-NAVERTIX-KOB"), Texts{"MORVANE-NAVERTIX-KOB#Start"});
  EXPECT_EQ(callsOn("obj", " obj.Execute('Play')"), Texts{"C#'Play'"});  // single quotes stay
  EXPECT_EQ(callsOn("obj", " obj.ExecuteCommand(1)"), Texts{"C#obj.ExecuteCommand(1)"});  // names nothing
  EXPECT_EQ(callsOn("obj", " obj.Execute(\n\"Two Words\")"), Texts{"C#TwoWords"});
  EXPECT_EQ(callsOn("tv", " tv.Open(1) tv.OpenAll()"), (Texts{"<null>", "<null>"}));
  EXPECT_TRUE(engine.resultList.empty());
}

TEST_F(CallExtractionTest, CallsCarryTheLineOfTheirFirstOccurrenceAndStopAtAFinding) {
  addSource(kPath, "var tv;\ninit();\n tv.A();\n tv.B();\n tv.A();\n");
  document({"A"});
  EXPECT_EQ(engine.findAPIsFromPool("C", "tv", engine.worthfulSourceList[0], kPath), RUN_UNDOCUMENTED_API);
  ASSERT_EQ(engine.foundCallList.size(), 2u);
  EXPECT_EQ(engine.foundCallList[0]->line, 3);
  EXPECT_EQ(results(), Texts{"../js/app.js(4) : UndocumentedAPI 'B' used\n"});
}

TEST_F(CallExtractionTest, BindingsSearchTheirBodyOrFileAndAllAreSearched) {
  addSource(kPath, "var a;\n\n this.tv.Bad1();\n");
  addSource("/tmp/0/app/www/js/b.js", "\n x.Bad3();\n");
  bind("C#this.tv", "Src", kPath);
  bind("C#x", "Func", kPath, " x.Bad2(); x.Bad5();");  // the body, not the file; its first finding ends it
  bind("C#x", "Src", "/tmp/0/app/www/js/b.js");
  bind("C#x", "Src", "/tmp/0/app/www/js/none.js");       // not a file worth scanning
  bind("C#x", "Global", "/tmp/0/app/www/js/b.js");       // neither kind
  bind("C#y", "Func", "/elsewhere/y.js", " y.Bad4();");  // file not scanned: line -1
  EXPECT_EQ(engine.FindAPIFunctionName4JS(), RUN_SUCCESS);
  EXPECT_EQ(results(), (Texts{"../js/app.js(3) : UndocumentedAPI 'Bad1' used\n",
                              "../js/app.js(0) : UndocumentedAPI 'Bad2' used\n",
                              "../js/b.js(1) : UndocumentedAPI 'Bad3' used\n",  // leading line feed not counted
                              "../(-1) : UndocumentedAPI 'Bad4' used\n"}));
}

TEST_F(CallExtractionTest, VariablesHoldingCommonHelpersAreSkipped) {
  const std::string pad(31, ' ');  // the helper ends on the 50th byte from "t1"
  for (const std::string& body : {" t1" + pad + "Common.API.Plugin\n t1.Bad();",
                                  " t2" + pad + " Common.API.Plugin\n t2.Bad();",       // one byte beyond: searched
                                  std::string(" t3.Bad(); var k = t3 || Common.API.TVKeyValue;"),  // any occurrence
                                  std::string(" t4=Common.API.Widget; t4.Bad();"),
                                  std::string(" t5 = new Common.Api.Plugin(); t5.Bad();")}) {  // searched
    bind(("C#" + body.substr(1, 2)).c_str(), "Func", kPath, body);
  }
  engine.FindAPIFunctionName4JS();
  EXPECT_EQ(expressionsOf(engine.foundCallList), (Texts{"C#t2.Bad()", "C#t5.Bad()"}));
}

TEST_F(CallExtractionTest, LookUpCallsAreJudgedThroughADummyObject) {
  const std::string b = "/tmp/0/app/www/b.js", c = "/tmp/0/app/www/c.js";
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
  EXPECT_EQ(expressionsOf(engine.foundCallList), (Texts{"C#DummyObject.GetModel(", "C#", "MORVANE-NAVERTIX-KOB#",
                                                        "MORVANE-NAVERTIX-KOB#", "C#DummyObject.Bad("}));
  EXPECT_EQ(results(), Texts{"../js/app.js(3) : UndocumentedAPI 'Bad' used\n"});
}

}  // namespace
