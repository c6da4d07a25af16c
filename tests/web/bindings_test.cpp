// Object variable binding: look-ups that name plug-in symbols, the variables
// they are assigned to, and the line of a symbol's first occurrence.
#include "web/ScannerFixture.h"

namespace {

const char kPath[] = "/tmp/0/app/www/js/main.js";

class BindingsTest : public ScannerFixture {
 protected:
  void symbols(std::initializer_list<const char*> ids) {
    for (const char* id : ids) engine.objectIdList.push_back(record(id));
  }
  void lookUps(std::initializer_list<const char*> accesses) {
    for (const char* access : accesses) engine.objectAccessList.push_back(record(access, "Global", kPath));
  }
  void declared(std::initializer_list<const char*> expressions) {
    for (const char* e : expressions) {
      std::string expression(e);
      engine.declareList.push_back(record(e, "Global", kPath, "", expression.substr(expression.find('#') + 1)));
    }
  }
};

TEST_F(BindingsTest, LookUpsNamingASymbolAreDeclaredWithTheSymbolsClass) {
  symbols({"MORVANE-NAVERTIX-KOB#tv", "MORVANE-NAVERTIX-TUNER#tuner"});
  engine.objectIdList.push_back(record("MORVANE-NAVERTIX-EPG#guide", "", "", "Func"));  // text "Func": skipped
  lookUps({"t=document.getElementById(\"tv\")", "x=$( 'tuner' )", "y=$(\"menu\")", "z=$(\"mytv\")", "w=$(\"tv2\")",
           "g=$(\"guide\")", " $(\"tuner\").Tune("});
  EXPECT_EQ(engine.FindDeclareListValidation(), RUN_SUCCESS);
  ASSERT_EQ(expressions(engine.declareList),
            (std::vector<std::string>{"MORVANE-NAVERTIX-KOB#t=document.getElementById(\"tv\")",
                                      "MORVANE-NAVERTIX-TUNER#x=$( 'tuner' )",
                                      "MORVANE-NAVERTIX-TUNER# $(\"tuner\").Tune("}));
  EXPECT_EQ(engine.declareList[1]->accessText, "x=$( 'tuner' )");
  EXPECT_EQ(engine.declareList[1]->filePath, kPath);
  EXPECT_EQ(engine.declareList[1]->scope, "Global");
}

TEST_F(BindingsTest, FirstSymbolInListOrderDecidesTheClass) {
  symbols({"MORVANE-NAVERTIX-EPG#b", "MORVANE-NAVERTIX-KOB#a"});
  lookUps({"f($(\"a\"), $(\"b\"))"});
  engine.FindDeclareListValidation();
  ASSERT_EQ(engine.declareList.size(), 1u);
  EXPECT_EQ(*engine.declareList[0]->expression, "MORVANE-NAVERTIX-EPG#f($(\"a\"), $(\"b\"))");
}

TEST_F(BindingsTest, EmbedsRecordsRepeatOncePerSymbolAndArriveInReverse) {
  symbols({"A#x", "B#y", "C#z"});
  for (int i = 0; i < 3; ++i) engine.objectTagList.push_back(record("tag"));
  lookUps({"p=$(\"y\")"});
  for (const char* e : {"e0=document.embeds[0]", "e2=document.embeds[ 2 ]", "e5=document.embeds[5]"}) {
    engine.embedsAccessList.push_back(record(e, "Global", kPath));
  }
  engine.FindDeclareListValidation();
  ASSERT_EQ(expressions(engine.declareList),
            (std::vector<std::string>{"B#p=$(\"y\")", "C#e2=document.embeds[ 2 ]", "C#e2=document.embeds[ 2 ]",
                                      "C#e2=document.embeds[ 2 ]", "A#e0=document.embeds[0]", "A#e0=document.embeds[0]",
                                      "A#e0=document.embeds[0]"}));
  EXPECT_EQ(engine.declareList.back()->accessText, "e0=document.embeds[0]");
  EXPECT_TRUE(engine.embedsDeclareList.empty());
}

TEST_F(BindingsTest, EmbedsIndexMustNameBothAnElementAndAClass) {
  symbols({"A#x"});
  for (int i = 0; i < 3; ++i) engine.objectTagList.push_back(record("tag"));
  engine.embedsAccessList.push_back(record("document.embeds[2]", "Global", kPath));  // only one class known
  engine.embedsAccessList.push_back(record("document.embeds[0]", "Global", kPath));
  engine.FindDeclareListValidation();
  ASSERT_EQ(expressions(engine.declareList), std::vector<std::string>{"A#document.embeds[0]"});
}

TEST_F(BindingsTest, AssignmentsBecomeBindings) {
  addSource(kPath, "var x;\n\nfunction init() {\n  tv = document.getElementById('tv');\n}\n");
  addFunction(kPath, "function init()", "{\n  tv = document.getElementById('tv');\n}");
  declared({"K#tv = document.getElementById('tv')", "K#this.player=$(\"player\")",
            "K#a = b = document.getElementById('tv')", "K#x==$(\"tv\")", "K#document.getElementById('tv').Open(",
            "K# $(\"tv\").Play(", "K#obj.tv=$(\"tv\")"});
  EXPECT_EQ(engine.FindObjectVariable(), RUN_SUCCESS);
  ASSERT_EQ(expressions(engine.objectVariableList),
            (std::vector<std::string>{"K#tv", "K#this.player", "K#a", "K#b", "K#x", "K#obj.tv"}));
  std::vector<std::string> scopes;
  for (const Record* r : engine.objectVariableList) scopes.push_back(r->scope);
  EXPECT_EQ(scopes, (std::vector<std::string>{"Func", "Src", "Func", "Func", "Func", "Func"}));
  EXPECT_EQ(engine.objectVariableList[0]->text, "{\n  tv = document.getElementById('tv');\n}");
  EXPECT_EQ(engine.objectVariableList[0]->line, 4);
  EXPECT_EQ(engine.objectVariableList[0]->filePath, kPath);
  EXPECT_EQ(engine.objectVariableList[1]->text, "");
  EXPECT_EQ(engine.objectVariableList[2]->text, "");  // no block contains that look-up
  EXPECT_EQ(engine.objectVariableList[4]->line, 1);   // first occurrence of "x"
}

TEST_F(BindingsTest, TheLastBlockOfTheSameFileContainingTheLookUpGivesTheText) {
  addSource(kPath, "t=$(\"tv\")\n");
  const char* lookUp = "t=$(\"tv\")";
  addFunction(kPath, "function a()", std::string("{ ") + lookUp + " }");
  addFunction("/tmp/0/app/www/other.js", "function b()", std::string("{ b ") + lookUp + " }");
  addFunction(kPath, "function c()", std::string("{ c ") + lookUp + " }");
  addFunction(kPath, "function d()", "{ d }");
  declared({"MORVANE-NAVERTIX-KOB#t=$(\"tv\")"});
  engine.FindObjectVariable();
  ASSERT_EQ(engine.objectVariableList.size(), 1u);
  EXPECT_EQ(engine.objectVariableList[0]->text, std::string("{ c ") + lookUp + " }");
}

TEST_F(BindingsTest, LineOfAFirstOccurrence) {
  addSource(kPath, "var tv;\nfunction f() {\n  tv.Play();\n}\n");
  addSource("/tmp/0/app/www/lf.js", "\nvar tv;\r\nx\r\n(tv2)\n");
  std::string other = "/tmp/0/app/www/lf.js";
  const struct {
    std::string path;
    const char* symbol;
    int line;
  } cases[] = {
      {kPath, "tv", 1},
      {kPath, "tv.Play()", 3},
      {kPath, " ;(tv.Play()", 0},  // ';' is kept: not found
      {kPath, "  (tv.Play()", 3},
      {kPath, "{tv.Play", 3},
      {kPath, "missing", 0},
      {"/nowhere.js", "tv", -1},
      {other, "tv", 1},  // a leading line feed is not counted
      {other, "x", 2},
      {other, "(tv2)", 3},
      {other, "\n", 1},  // only skipped bytes: used whole
  };
  for (const auto& c : cases) {
    std::string path = c.path;
    std::string symbol = c.symbol;
    EXPECT_EQ(engine.foundSymbolLineNumber(&path, &symbol), c.line) << c.path << " " << c.symbol;
  }
}

}  // namespace
